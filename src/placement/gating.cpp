#include "placement/gating.h"

#include <string>

#include "gifview/notification_names.h"
#include "placement/host_wallpaper.h"
#include "placement/installation.h"
#include "placement/location_table.h"
#include "placement/tweak_queue.h"
#include "platform/messaging_center.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

using platform::UIView;

bool isPresent(const LocationEntry& entry) {
  const auto view = entry.view.load();
  return view && view->superview();
}

void sendToView(const LocationEntry& entry, bool animate) {
  platform::CPDistributedMessagingCenter::centerNamed(messagingCenterPrefix + entry.identifier())
      ->sendMessageName(animate ? shouldResumeMessage : shouldPauseMessage);
}

void bringToFront(const std::shared_ptr<UIView>& view) {
  if (!view) return;
  if (auto superview = view->superview()) superview->bringSubviewToFront(view);
}

void animate(ScreenLocation location, bool animate) {
  const LocationEntry* entry = entryOf(location);
  if (entry != nullptr) sendToView(*entry, animate);
  const platform::id controller = sharedWallpaperController();
  const auto hostView = entry == nullptr ? nullptr : hostWallpaperView(controller, *entry);
  hopToMainQueue([hostView] { bringToFront(hostView); }, deadlineFromNow());
}

void sweep() {
  const platform::id controller = sharedWallpaperController();
  const LocationEntry* entries[] = {&sharedEntry, &lockscreenEntry, &homescreenEntry};
  std::shared_ptr<UIView> hostViews[std::size(entries)];
  for (std::size_t at = 0; at < std::size(entries); ++at) {
    hostViews[at] = hostWallpaperView(controller, *entries[at]);
  }
  for (std::size_t at = 0; at < std::size(entries); ++at) {
    const auto& view = hostViews[at];
    if (view && !view->hidden()) setWallpaperAnimating(entries[at]->location, true);
  }
}

}  // namespace

void setWallpaperAnimating(ScreenLocation location, bool shouldAnimate) {
  if (!getEnabled()) return;
  const LocationEntry* entry = entryOf(location);
  if (entry != nullptr && !isPresent(*entry)) updateWallpaperImages();
  addToTweakQueue([location, shouldAnimate] { animate(location, shouldAnimate); });
}

void resumeVisibleWallpapers() {
  addToTweakQueue(sweep);
}

}  // namespace lumora
