#include "placement/removal.h"

#include "gifview/gif_view.h"
#include "placement/tweak_queue.h"
#include "placement/view_slots.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

void detach(const ViewSlot& slot) {
  if (auto view = slot.view.load()) view->removeFromSuperview();
}

void removeLocation(ScreenLocation location) {
  const ViewSlot& slot = *slotOf(location);
  hopToMainQueue([&slot] { detach(slot); }, deadlineFromNow());
  setPreferencesObjectKey("FALSE", slot.location.wallpaperSetKey);
  deleteGIFAndFrameCache(slot.location);
}

void removeAll() {
  hopToMainQueue(
      [] {
        for (const ViewSlot& slot : viewSlots) detach(slot);
      },
      deadlineFromNow());
  setPreferencesObjectKey("FALSE", "WALLPAPER_SET");
  for (const Location& location : locations) {
    setPreferencesObjectKey("FALSE", location.wallpaperSetKey);
  }
}

}  // namespace

void removeSharedGIFView() {
  addToTweakQueue([] { removeLocation(ScreenLocation::Shared); });
}

void removeLockscreenGIFView() {
  addToTweakQueue([] { removeLocation(ScreenLocation::LockScreen); });
}

void removeHomescreenGIFView() {
  addToTweakQueue([] { removeLocation(ScreenLocation::HomeScreen); });
}

void removeGIFFromAllWallpapers() {
  addToTweakQueue(removeAll);
}

}  // namespace lumora
