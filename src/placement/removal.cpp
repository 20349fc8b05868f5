#include "placement/removal.h"

#include "gifview/gif_view.h"
#include "placement/location_table.h"
#include "placement/tweak_queue.h"
#include "platform/file_manager.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

void detach(const LocationEntry& entry) {
  if (auto view = entry.view.load()) view->removeFromSuperview();
}

void removeLocation(const LocationEntry& entry) {
  hopToMainQueue([&entry] { detach(entry); }, deadlineFromNow());
  setPreferencesObjectKey("FALSE", entry.location.wallpaperSetKey);
  platform::removeItemAtPath(entry.location.gifPath);
  platform::removeItemAtPath(platform::stringByDeletingPathExtension(entry.location.gifPath));
}

void removeAll() {
  hopToMainQueue(
      [] {
        for (const LocationEntry& entry : locationEntries) detach(entry);
      },
      deadlineFromNow());
  setPreferencesObjectKey("FALSE", "WALLPAPER_SET");
  for (const Location& location : locations) {
    setPreferencesObjectKey("FALSE", location.wallpaperSetKey);
  }
}

}  // namespace

void removeSharedGIFView() {
  addToTweakQueue([] { removeLocation(locationEntries[0]); });
}

void removeLockscreenGIFView() {
  addToTweakQueue([] { removeLocation(locationEntries[1]); });
}

void removeHomescreenGIFView() {
  addToTweakQueue([] { removeLocation(locationEntries[2]); });
}

void removeGIFFromAllWallpapers() {
  addToTweakQueue(removeAll);
}

}  // namespace lumora
