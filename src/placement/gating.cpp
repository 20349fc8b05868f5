#include "placement/gating.h"

#include <array>
#include <string>

#include "gifview/gif_view.h"
#include "placement/host_wallpaper.h"
#include "placement/installation.h"
#include "placement/tweak_queue.h"
#include "placement/view_slots.h"
#include "placement/wallpaper_listener.h"
#include "platform/messaging_center.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

using platform::UIView;

bool isPresent(const ViewSlot& slot) {
  const auto view = slot.view.load();
  return view && view->superview();
}

void sendToView(const ViewSlot& slot, bool shouldAnimate) {
  platform::CPDistributedMessagingCenter::centerNamed(std::string(messagingCenterPrefix) +
                                                      slot.location.identifier)
      ->sendMessageName(shouldAnimate ? shouldResumeMessage : shouldPauseMessage);
}

void bringToFront(const std::shared_ptr<UIView>& view) {
  if (!view) return;
  if (auto superview = view->superview()) superview->bringSubviewToFront(view);
}

// slot is nullptr for an unknown location: no view gets a message then.
void setAnimating(const ViewSlot* slot, bool shouldAnimate) {
  if (slot != nullptr) sendToView(*slot, shouldAnimate);
  const platform::id controller = sharedWallpaperController();
  const auto hostView = slot == nullptr ? nullptr : hostWallpaperView(controller, *slot);
  hopToMainQueue([hostView] { bringToFront(hostView); }, deadlineFromNow());
}

void resumeVisible() {
  const platform::id controller = sharedWallpaperController();
  std::array<std::shared_ptr<UIView>, locations.size()> hostViews;
  for (std::size_t at = 0; at < hostViews.size(); ++at) {
    hostViews[at] = hostWallpaperView(controller, viewSlots[at]);
  }
  for (std::size_t at = 0; at < hostViews.size(); ++at) {
    if (hostViews[at] && !hostViews[at]->hidden())
      setWallpaperAnimating(viewSlots[at].location.id, true);
  }
}

}  // namespace

void setWallpaperAnimating(ScreenLocation location, bool shouldAnimate) {
  if (!getEnabled()) return;
  const ViewSlot* slot = slotOf(location);
  if (slot != nullptr && !isPresent(*slot)) updateWallpaperImages();
  addToTweakQueue([slot, shouldAnimate] { setAnimating(slot, shouldAnimate); });
}

void gateWallpapers() {
  LWWallpaperListener::setVisibilityHandler(setWallpaperAnimating);
}

void resumeVisibleWallpapers() {
  addToTweakQueue(resumeVisible);
}

}  // namespace lumora
