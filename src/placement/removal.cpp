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

void removeLocation(const ViewSlot& slot) {
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
  addToTweakQueue([] { removeLocation(viewSlots[0]); });
}

void removeLockscreenGIFView() {
  addToTweakQueue([] { removeLocation(viewSlots[1]); });
}

void removeHomescreenGIFView() {
  addToTweakQueue([] { removeLocation(viewSlots[2]); });
}

void removeGIFFromAllWallpapers() {
  addToTweakQueue(removeAll);
}

}  // namespace lumora
