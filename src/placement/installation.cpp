#include "placement/installation.h"

#include <array>

#include "gifview/gif_view.h"
#include "placement/frame_layout.h"
#include "placement/host_wallpaper.h"
#include "placement/location_table.h"
#include "placement/scaling.h"
#include "placement/tweak_queue.h"
#include "placement/wallpaper_listener.h"
#include "platform/file_manager.h"
#include "platform/image.h"
#include "settings/settings_store.h"
#include "threads/main_queue_hop.h"

namespace lumora {
namespace {

using platform::CGRect;
using platform::UIView;

// The host's wallpaper view of each location; nullptr for locations that the mode does not use.
using HostViews = std::array<std::shared_ptr<UIView>, 3>;

bool isUsed(const LocationEntry& entry, WallpaperMode mode) {
  return entry.location.mode == mode;
}

// Returns true if the wallpaper selected in the settings can be decoded. The other locations' files
// are decoded, too, although their results are not used.
bool hasPictureForSettings() {
  std::array<bool, 3> isPicture{};
  for (std::size_t at = 0; at < locations.size(); ++at) {
    isPicture[at] = platform::imageWithContentsOfFile(locations[at].gifPath) != nullptr;
  }
  const WallpaperMode mode = wallpaperMode();
  const std::int32_t chosen = mode == WallpaperMode::Separate ? getLocationIndex() : -1;
  for (std::size_t at = 0; at < locations.size(); ++at) {
    const bool isAskedFor = locations[at].mode == mode && locations[at].locationIndex == chosen;
    if (isAskedFor && !isPicture[at]) return false;
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
  HostViews hosts;
  const WallpaperMode mode = wallpaperMode();
  for (std::size_t at = 0; at < hosts.size(); ++at) {
    if (!isUsed(locationEntries[at], mode)) continue;
    hosts[at] = hostWallpaperView(controller, locationEntries[at]);
    LWWallpaperListener::addListenerToObject(hosts[at], locations[at].id);
  }
  for (std::size_t at = 0; at < hosts.size(); ++at) {
    if (hosts[at]) hosts[at]->setTag(static_cast<int>(locations[at].id));
  }
  return hosts;
}

void takeOverAnimatedView(const std::shared_ptr<UIView>& host, const LocationEntry& entry) {
  if (!host) return;
  for (const auto& subview : host->subviews()) {
    if (subview->tag() != LWGIFView::animatedViewTag) continue;
    if (auto view = std::dynamic_pointer_cast<LWGIFView>(subview)) entry.view.store(view);
  }
}

void takeOverAnimatedViews(const HostViews& hosts) {
  const WallpaperMode mode = wallpaperMode();
  for (std::size_t at = 0; at < hosts.size(); ++at) {
    if (isUsed(locationEntries[at], mode)) takeOverAnimatedView(hosts[at], locationEntries[at]);
  }
}

void attach(const std::shared_ptr<UIView>& host, const std::shared_ptr<LWGIFView>& view) {
  if (host && view) host->addSubview(view);
}

void createViewIfMissing(const std::shared_ptr<UIView>& host, const LocationEntry& entry,
                         Deadline deadline) {
  if (entry.view.load()) return;
  auto view = LWGIFView::initWithIdentifier(entry.location.identifier);
  view->setTag(LWGIFView::animatedViewTag);
  entry.view.store(view);
  hopToMainQueue([host, view] { attach(host, view); }, deadline);
}

// Creates the home screen's view before the lock screen's.
void createMissingViews(const HostViews& hosts, Deadline deadline) {
  const WallpaperMode mode = wallpaperMode();
  for (std::size_t at = hosts.size(); at-- > 0;) {
    if (isUsed(locationEntries[at], mode)) {
      createViewIfMissing(hosts[at], locationEntries[at], deadline);
    }
  }
}

// Sets the frames of all views, whatever the mode.
void setFrames(const CGRect& screen, Deadline deadline) {
  const CGRect besideDock = rectangleBesideDock(screen);
  hopToMainQueue(
      [screen, besideDock] {
        for (const LocationEntry& entry : locationEntries) {
          // The lock screen has no dock.
          const bool isLockScreen = entry.location.id == ScreenLocation::LockScreen;
          if (auto view = entry.view.load()) view->setFrame(isLockScreen ? screen : besideDock);
        }
      },
      deadline);
}

// Scales the home screen's view before the lock screen's.
void scaleViews() {
  for (const std::size_t at : {0, 2, 1}) {
    const LocationEntry& entry = locationEntries[at];
    if (auto view = entry.view.load()) {
      updateScalingModeOfWallpaper(view, entry.location.identifier);
    }
  }
}

void reattachViews(const HostViews& hosts, Deadline deadline) {
  hopToMainQueue(
      [hosts] {
        const WallpaperMode mode = wallpaperMode();
        for (std::size_t at = 0; at < hosts.size(); ++at) {
          if (!isUsed(locationEntries[at], mode)) continue;
          const auto view = locationEntries[at].view.load();
          if (view && !view->superview()) attach(hosts[at], view);
        }
      },
      deadline);
}

void markIfFilePresent(const Location& location) {
  bool isDirectory = false;
  if (platform::fileExistsAtPath(location.gifPath, isDirectory) && !isDirectory) {
    setPreferencesObjectKey("TRUE", location.wallpaperSetKey);
  }
}

void startView(const LocationEntry& entry) {
  if (auto view = entry.view.load()) view->startAnimationWithGIFAtPath(entry.location.gifPath);
}

void markAndStart() {
  const WallpaperMode mode = wallpaperMode();
  for (const LocationEntry& entry : locationEntries) {
    if (isUsed(entry, mode)) markIfFilePresent(entry.location);
  }
  for (const LocationEntry& entry : locationEntries) {
    if (isUsed(entry, mode)) startView(entry);
  }
}

// Every step reads the mode again, because the settings may change while the installation runs. All
// waits share one deadline, so that a slow main thread delays the installation once, not at every
// step.
void install() {
  if (!hasPictureForSettings()) return;
  const CGRect screen = screenRectangle();
  const platform::id controller = sharedWallpaperController();
  const Deadline deadline = deadlineFromNow();
  redrawHostWallpaper(controller, deadline);
  const HostViews hosts = listenToHostViews(controller);
  takeOverAnimatedViews(hosts);
  createMissingViews(hosts, deadline);
  setFrames(screen, deadline);
  scaleViews();
  reattachViews(hosts, deadline);
  markAndStart();
  setPreferencesObjectKey("TRUE", "WALLPAPER_SET");
}

}  // namespace

void updateWallpaperImages() {
  addToTweakQueue(install);
}

}  // namespace lumora
