#include "placement/installation.h"

#include <array>

#include "gifview/gif_view.h"
#include "gifview/live_settings.h"
#include "placement/frame_layout.h"
#include "placement/host_wallpaper.h"
#include "placement/scaling.h"
#include "placement/tweak_queue.h"
#include "placement/view_slots.h"
#include "platform/file_manager.h"
#include "platform/image.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

using platform::CGRect;
using platform::UIView;

// The host's wallpaper view of each location; nullptr for locations that the mode does not use.
using HostViews = std::array<std::shared_ptr<UIView>, locations.size()>;

// Returns true if the wallpaper selected in the settings can be decoded. The other locations' files
// are decoded, too, although their results are not used.
bool hasImageForSettings() {
  std::array<bool, locations.size()> isImage{};
  for (std::size_t at = 0; at < locations.size(); ++at) {
    isImage[at] = platform::imageWithContentsOfFile(locations[at].gifPath) != nullptr;
  }
  for (std::size_t at = 0; at < locations.size(); ++at) {
    if (isSelectedInSettings(locations[at]) && !isImage[at]) return false;
  }
  return true;
}

void redrawHostWallpaper(platform::id controller, Deadline deadline) {
  hopToMainQueue(
      [controller] {
        const WallpaperMode mode = wallpaperMode();
        if (mode == WallpaperMode::Shared) {
          platform::objc_msgSend<void>(controller, "_updateSharedWallpaper");
        } else if (mode == WallpaperMode::Separate) {
          platform::objc_msgSend<void>(controller, "_updateSeparateWallpaper");
        }
      },
      deadline);
}

HostViews listenToHostViews(platform::id controller) {
  HostViews hostViews;
  const WallpaperMode mode = wallpaperMode();
  for (std::size_t at = 0; at < hostViews.size(); ++at) {
    const ViewSlot& slot = viewSlots[at];
    if (!isUsed(slot.location, mode)) continue;
    hostViews[at] = hostWallpaperView(controller, slot);
    LWWallpaperListener::addListenerToObject(hostViews[at], slot.listener);
  }
  for (std::size_t at = 0; at < hostViews.size(); ++at) {
    if (hostViews[at]) hostViews[at]->setTag(static_cast<int>(viewSlots[at].location.id));
  }
  return hostViews;
}

void takeOverAnimatedView(const std::shared_ptr<UIView>& hostView, const ViewSlot& slot) {
  if (!hostView) return;
  for (const auto& subview : hostView->subviews()) {
    if (subview->tag() != LWGIFView::animatedViewTag) continue;
    if (auto view = std::dynamic_pointer_cast<LWGIFView>(subview)) slot.view.store(view);
  }
}

void takeOverAnimatedViews(const HostViews& hostViews) {
  const WallpaperMode mode = wallpaperMode();
  for (std::size_t at = 0; at < hostViews.size(); ++at) {
    const ViewSlot& slot = viewSlots[at];
    if (isUsed(slot.location, mode)) takeOverAnimatedView(hostViews[at], slot);
  }
}

void attach(const std::shared_ptr<UIView>& hostView, const std::shared_ptr<LWGIFView>& view) {
  if (hostView && view) hostView->addSubview(view);
}

void createViewIfMissing(const std::shared_ptr<UIView>& hostView, const ViewSlot& slot,
                         Deadline deadline) {
  if (slot.view.load()) return;
  auto view = LWGIFView::initWithIdentifier(slot.location.identifier);
  observeSettings(view);
  view->setTag(LWGIFView::animatedViewTag);
  slot.view.store(view);
  hopToMainQueue([hostView, view] { attach(hostView, view); }, deadline);
}

// Creates the home screen's view before the lock screen's. The order is fixed, because it shows: in
// the same order, notifications reach the views.
void createMissingViews(const HostViews& hostViews, Deadline deadline) {
  const WallpaperMode mode = wallpaperMode();
  for (std::size_t at = hostViews.size(); at-- > 0;) {
    const ViewSlot& slot = viewSlots[at];
    if (isUsed(slot.location, mode)) createViewIfMissing(hostViews[at], slot, deadline);
  }
}

// Sets the frames of all views, whatever the mode.
void setFrames(const CGRect& screen, Deadline deadline) {
  const CGRect besideDock = rectangleBesideDock(screen);
  hopToMainQueue(
      [screen, besideDock] {
        for (const ViewSlot& slot : viewSlots) {
          // The lock screen has no dock.
          const bool isLockScreen = slot.location.id == ScreenLocation::LockScreen;
          if (auto view = slot.view.load()) view->setFrame(isLockScreen ? screen : besideDock);
        }
      },
      deadline);
}

// Scales the views in the order in which they are created.
void scaleViews() {
  for (const ScreenLocation location :
       {ScreenLocation::Shared, ScreenLocation::HomeScreen, ScreenLocation::LockScreen}) {
    const ViewSlot& slot = *slotOf(location);
    if (auto view = slot.view.load()) {
      updateScalingModeOfWallpaper(view, slot.location.identifier);
    }
  }
}

void reattachViews(const HostViews& hostViews, Deadline deadline) {
  hopToMainQueue(
      [hostViews] {
        const WallpaperMode mode = wallpaperMode();
        for (std::size_t at = 0; at < hostViews.size(); ++at) {
          const ViewSlot& slot = viewSlots[at];
          if (!isUsed(slot.location, mode)) continue;
          const auto view = slot.view.load();
          if (view && !view->superview()) attach(hostViews[at], view);
        }
      },
      deadline);
}

void recordIfFilePresent(const Location& location) {
  bool isDirectory = false;
  if (platform::fileExistsAtPath(location.gifPath, isDirectory) && !isDirectory) {
    setPreferencesObjectKey("TRUE", location.wallpaperSetKey);
  }
}

void passGif(const ViewSlot& slot) {
  if (auto view = slot.view.load()) view->startAnimationWithGIFAtPath(slot.location.gifPath);
}

void recordAndPassGifs() {
  const WallpaperMode mode = wallpaperMode();
  for (const ViewSlot& slot : viewSlots) {
    if (isUsed(slot.location, mode)) recordIfFilePresent(slot.location);
  }
  for (const ViewSlot& slot : viewSlots) {
    if (isUsed(slot.location, mode)) passGif(slot);
  }
}

// Every step reads the mode again, because the settings may change while the installation runs. The
// hops to the main queue here share one deadline, so that a slow main thread delays the
// installation once, not at every step.
void install() {
  if (!hasImageForSettings()) return;
  const CGRect screen = screenRectangle();
  const platform::id controller = sharedWallpaperController();
  const Deadline deadline = deadlineFromNow();
  redrawHostWallpaper(controller, deadline);
  const HostViews hostViews = listenToHostViews(controller);
  takeOverAnimatedViews(hostViews);
  createMissingViews(hostViews, deadline);
  setFrames(screen, deadline);
  scaleViews();
  reattachViews(hostViews, deadline);
  recordAndPassGifs();
  setPreferencesObjectKey("TRUE", "WALLPAPER_SET");
}

}  // namespace

void updateWallpaperImages() {
  addToTweakQueue(install);
}

}  // namespace lumora
