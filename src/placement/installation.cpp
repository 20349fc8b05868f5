#include "placement/installation.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "placement/host_wallpaper.h"
#include "placement/location_table.h"
#include "placement/scaling.h"
#include "placement/tweak_queue.h"
#include "platform/device.h"
#include "platform/file_manager.h"
#include "platform/image.h"
#include "platform/string_value.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

using platform::CGFloat;
using platform::CGRect;
using platform::UIInterfaceOrientation;
using platform::UIView;

constexpr std::int32_t sharedMode = 1;
constexpr std::int32_t separateMode = 0;

// The host's wallpaper views of the current mode; those of the other mode stay nullptr.
struct HostViews {
  std::shared_ptr<UIView> shared;
  std::shared_ptr<UIView> lockScreen;
  std::shared_ptr<UIView> homeScreen;
};

// All three files are always loaded, only to learn which of them are pictures.
bool hasPictureForSettings() {
  const bool shared = platform::imageWithContentsOfFile(sharedEntry.gifPath) != nullptr;
  const bool lockScreen = platform::imageWithContentsOfFile(lockscreenEntry.gifPath) != nullptr;
  const bool homeScreen = platform::imageWithContentsOfFile(homescreenEntry.gifPath) != nullptr;
  const std::int32_t mode = getModeIndex();
  if (mode == sharedMode && !shared) return false;
  if (mode == separateMode && getLocationIndex() == 0 && !lockScreen) return false;
  return !(mode == separateMode && getLocationIndex() == 1 && !homeScreen);
}

bool isLandscape(UIInterfaceOrientation orientation) {
  return orientation == UIInterfaceOrientation::LandscapeLeft ||
         orientation == UIInterfaceOrientation::LandscapeRight;
}

CGRect screenRectangle() {
  CGRect screen = platform::mainScreenBounds().value_or(CGRect());
  if (isLandscape(platform::statusBarOrientation())) std::swap(screen.width, screen.height);
  return screen;
}

void redrawHostWallpaper(platform::id controller, Deadline deadline) {
  hopToMainQueue(
      [controller] {
        const std::int32_t mode = getModeIndex();
        if (mode == sharedMode) {
          platform::objc_msgSend<void>(controller, "_updateSharedWallpaper");
        } else if (mode == separateMode) {
          platform::objc_msgSend<void>(controller, "_updateSeparateWallpaper");
        }
      },
      deadline);
}

void tagHostView(const std::shared_ptr<UIView>& view, ScreenLocation location) {
  if (view) view->setTag(static_cast<int>(location));
}

HostViews listenToHostViews(platform::id controller) {
  HostViews views;
  const std::int32_t mode = getModeIndex();
  if (mode == sharedMode) {
    views.shared = hostWallpaperView(controller, sharedEntry);
    LWWallpaperListener::addListenerToObject(views.shared, ScreenLocation::Shared);
    tagHostView(views.shared, ScreenLocation::Shared);
  } else if (mode == separateMode) {
    views.lockScreen = hostWallpaperView(controller, lockscreenEntry);
    views.homeScreen = hostWallpaperView(controller, homescreenEntry);
    LWWallpaperListener::addListenerToObject(views.lockScreen, ScreenLocation::LockScreen);
    LWWallpaperListener::addListenerToObject(views.homeScreen, ScreenLocation::HomeScreen);
    tagHostView(views.lockScreen, ScreenLocation::LockScreen);
    tagHostView(views.homeScreen, ScreenLocation::HomeScreen);
  }
  return views;
}

void takeOverAnimatedView(const std::shared_ptr<UIView>& host, const LocationEntry& entry) {
  if (!host) return;
  for (const auto& subview : host->subviews()) {
    if (subview->tag() != LWGIFView::animatedViewTag) continue;
    if (auto view = std::dynamic_pointer_cast<LWGIFView>(subview)) entry.view.store(view);
  }
}

void takeOverAnimatedViews(const HostViews& views) {
  const std::int32_t mode = getModeIndex();
  if (mode == sharedMode) takeOverAnimatedView(views.shared, sharedEntry);
  if (mode != separateMode) return;
  takeOverAnimatedView(views.lockScreen, lockscreenEntry);
  takeOverAnimatedView(views.homeScreen, homescreenEntry);
}

void attach(const std::shared_ptr<UIView>& host, const std::shared_ptr<LWGIFView>& view) {
  if (host && view) host->addSubview(view);
}

void createViewIfMissing(const std::shared_ptr<UIView>& host, const LocationEntry& entry,
                         Deadline deadline) {
  if (entry.view.load()) return;
  auto view = LWGIFView::initWithIdentifier(entry.identifier());
  view->setTag(LWGIFView::animatedViewTag);
  entry.view.store(view);
  hopToMainQueue([host, view] { attach(host, view); }, deadline);
}

void createMissingViews(const HostViews& views, Deadline deadline) {
  const std::int32_t mode = getModeIndex();
  if (mode == sharedMode) createViewIfMissing(views.shared, sharedEntry, deadline);
  if (mode != separateMode) return;
  createViewIfMissing(views.homeScreen, homescreenEntry, deadline);
  createViewIfMissing(views.lockScreen, lockscreenEntry, deadline);
}

CGFloat dockHeight() {
  if (!getDockEnabled()) return 0;
  const CGFloat height = defaultDockHeight();
  const CGFloat screenHeight = platform::mainScreenBounds().value_or(CGRect()).height;
  if (height > 0 && height < screenHeight) return height;
  // The stored height deliberately passes through its six-decimal text.
  return static_cast<CGFloat>(platform::doubleValue(platform::decimalText(getDockHeight())));
}

bool isPhone() {
  const auto idiom = platform::userInterfaceIdiom();
  return !idiom || *idiom == platform::UIUserInterfaceIdiom::Phone;
}

// The screen less the dock, which stands at the side of a phone held sideways.
CGRect rectangleBesideDock(const CGRect& screen) {
  const UIInterfaceOrientation orientation = platform::statusBarOrientation();
  const CGFloat dock = dockHeight();
  if (isPhone() && isLandscape(orientation)) return {0, 0, screen.width - dock, screen.height};
  return {0, 0, screen.width, screen.height - dock};
}

void setFrames(const CGRect& screen, Deadline deadline) {
  const CGRect besideDock = rectangleBesideDock(screen);
  hopToMainQueue(
      [screen, besideDock] {
        // The lock screen has no dock.
        if (auto view = sharedGIFView.load()) view->setFrame(besideDock);
        if (auto view = lockscreenGIFView.load()) view->setFrame(screen);
        if (auto view = homescreenGIFView.load()) view->setFrame(besideDock);
      },
      deadline);
}

void scaleViews() {
  for (const LocationEntry* entry : {&sharedEntry, &homescreenEntry, &lockscreenEntry}) {
    if (auto view = entry->view.load()) updateScalingModeOfWallpaper(view, entry->identifier());
  }
}

void attachIfDetached(const std::shared_ptr<UIView>& host, const LocationEntry& entry) {
  const auto view = entry.view.load();
  if (view && !view->superview()) attach(host, view);
}

void reattachViews(const HostViews& views, Deadline deadline) {
  hopToMainQueue(
      [views] {
        const std::int32_t mode = getModeIndex();
        if (mode == separateMode) {
          attachIfDetached(views.lockScreen, lockscreenEntry);
          attachIfDetached(views.homeScreen, homescreenEntry);
        } else if (mode == sharedMode) {
          attachIfDetached(views.shared, sharedEntry);
        }
      },
      deadline);
}

void markIfFilePresent(const LocationEntry& entry) {
  bool isDirectory = false;
  if (platform::fileExistsAtPath(entry.gifPath, isDirectory) && !isDirectory) {
    setPreferencesObjectKey("TRUE", entry.wallpaperSetKey());
  }
}

void startView(const LocationEntry& entry) {
  if (auto view = entry.view.load()) view->startAnimationWithGIFAtPath(entry.gifPath);
}

void markAndStart() {
  const std::int32_t mode = getModeIndex();
  if (mode == sharedMode) {
    markIfFilePresent(sharedEntry);
    startView(sharedEntry);
  } else if (mode == separateMode) {
    markIfFilePresent(lockscreenEntry);
    markIfFilePresent(homescreenEntry);
    startView(lockscreenEntry);
    startView(homescreenEntry);
  }
}

// Every step asks for the mode afresh: the settings may change while the installation runs. All
// waits share one deadline, so a slow main thread delays the installation once, not at every step.
void install() {
  if (!hasPictureForSettings()) return;
  const CGRect screen = screenRectangle();
  const platform::id controller = sharedWallpaperController();
  const Deadline deadline = deadlineFromNow();
  redrawHostWallpaper(controller, deadline);
  const HostViews views = listenToHostViews(controller);
  takeOverAnimatedViews(views);
  createMissingViews(views, deadline);
  setFrames(screen, deadline);
  scaleViews();
  reattachViews(views, deadline);
  markAndStart();
  setPreferencesObjectKey("TRUE", "WALLPAPER_SET");
}

}  // namespace

void updateWallpaperImages() {
  addToTweakQueue(install);
}

}  // namespace lumora
