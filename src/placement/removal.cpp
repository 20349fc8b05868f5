#include "placement/removal.h"

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
  setPreferencesObjectKey("FALSE", entry.wallpaperSetKey());
  platform::removeItemAtPath(entry.gifPath);
  platform::removeItemAtPath(platform::stringByDeletingPathExtension(entry.gifPath));
}

void removeAll() {
  hopToMainQueue(
      [] {
        detach(sharedEntry);
        detach(lockscreenEntry);
        detach(homescreenEntry);
      },
      deadlineFromNow());
  setPreferencesObjectKey("FALSE", "WALLPAPER_SET");
  setPreferencesObjectKey("FALSE", sharedEntry.wallpaperSetKey());
  setPreferencesObjectKey("FALSE", lockscreenEntry.wallpaperSetKey());
  setPreferencesObjectKey("FALSE", homescreenEntry.wallpaperSetKey());
}

}  // namespace

void removeSharedGIFView() {
  addToTweakQueue([] { removeLocation(sharedEntry); });
}

void removeLockscreenGIFView() {
  addToTweakQueue([] { removeLocation(lockscreenEntry); });
}

void removeHomescreenGIFView() {
  addToTweakQueue([] { removeLocation(homescreenEntry); });
}

void removeGIFFromAllWallpapers() {
  addToTweakQueue(removeAll);
}

}  // namespace lumora
