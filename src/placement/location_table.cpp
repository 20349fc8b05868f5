#include "placement/location_table.h"

#include "settings/device_paths.h"

namespace lumora {

constinit ViewGlobal sharedGIFView;
constinit ViewGlobal lockscreenGIFView;
constinit ViewGlobal homescreenGIFView;
constinit ListenerGlobal sharedListener;
constinit ListenerGlobal lockscreenListener;
constinit ListenerGlobal homescreenListener;

const LocationEntry sharedEntry{ScreenLocation::Shared, sharedGIFView, sharedListener,
                                "_sharedWallpaperView", sharedGIFPath};
const LocationEntry lockscreenEntry{ScreenLocation::LockScreen, lockscreenGIFView,
                                    lockscreenListener, "_lockscreenWallpaperView",
                                    lockscreenGIFPath};
const LocationEntry homescreenEntry{ScreenLocation::HomeScreen, homescreenGIFView,
                                    homescreenListener, "_homescreenWallpaperView",
                                    homescreenGIFPath};

const LocationEntry* entryOf(ScreenLocation location) {
  switch (location) {
    case ScreenLocation::Shared:
      return &sharedEntry;
    case ScreenLocation::LockScreen:
      return &lockscreenEntry;
    case ScreenLocation::HomeScreen:
      return &homescreenEntry;
    case ScreenLocation::Unknown:
      break;
  }
  return nullptr;
}

}  // namespace lumora
