#include "tool/device/frame_caches.h"

#include <cstdio>

#include "gifview/frame_cache.h"
#include "platform/file_manager.h"
#include "settings/locations.h"
#include "tool/device/cache_contents.h"

namespace tool {

bool removeUnfinishedCaches() {
  bool wereAny = false;
  for (const lumora::Location& location : lumora::locations) {
    const lumora::FrameCacheLayout layout(location.gifPath);
    if (!platform::fileExistsAtPath(layout.savedGIFPath)) continue;
    if (contentsOf(layout).isComplete()) continue;
    platform::removeItemAtPath(layout.GIFDirectory);
    std::printf("frames of %s were missing; all of them are made again\n", location.gifPath);
    wereAny = true;
  }
  return wereAny;
}

}  // namespace tool
