#include "placement/gating.h"

#include <array>
#include <string>

#include "gifview/gif_view.h"
#include "placement/host_wallpaper.h"
#include "placement/installation.h"
#include "placement/location_table.h"
#include "placement/tweak_queue.h"
#include "platform/messaging_center.h"
#include "settings/notification_names.h"
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
  platform::CPDistributedMessagingCenter::centerNamed(std::string(messagingCenterPrefix) +
                                                      entry.location.identifier)
      ->sendMessageName(animate ? shouldResumeMessage : shouldPauseMessage);
}

void bringToFront(const std::shared_ptr<UIView>& view) {
  if (!view) return;
  if (auto superview = view->superview()) superview->bringSubviewToFront(view);
}

// entry is nullptr for an unknown location: no view gets a message then.
void animate(const LocationEntry* entry, bool animate) {
  if (entry != nullptr) sendToView(*entry, animate);
  const platform::id controller = sharedWallpaperController();
  const auto hostView = entry == nullptr ? nullptr : hostWallpaperView(controller, *entry);
  hopToMainQueue([hostView] { bringToFront(hostView); }, deadlineFromNow());
}

void sweep() {
  const platform::id controller = sharedWallpaperController();
  std::array<std::shared_ptr<UIView>, 3> hosts;
  for (std::size_t at = 0; at < hosts.size(); ++at) {
    hosts[at] = hostWallpaperView(controller, locationEntries[at]);
  }
  for (std::size_t at = 0; at < hosts.size(); ++at) {
    if (hosts[at] && !hosts[at]->hidden()) setWallpaperAnimating(locations[at].id, true);
  }
}

}  // namespace

void setWallpaperAnimating(ScreenLocation location, bool shouldAnimate) {
  if (!getEnabled()) return;
  const LocationEntry* entry = entryOf(location);
  if (entry != nullptr && !isPresent(*entry)) updateWallpaperImages();
  addToTweakQueue([entry, shouldAnimate] { animate(entry, shouldAnimate); });
}

void resumeVisibleWallpapers() {
  addToTweakQueue(sweep);
}

}  // namespace lumora
