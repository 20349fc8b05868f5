#include "hooks/launch.h"

#include "hooks/control_notifications.h"
#include "hooks/rotation.h"
#include "placement/gating.h"
#include "placement/tweak_queue.h"
#include "platform/file_manager.h"
#include "platform/notification_center.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"
#include "threads/exception_barrier.h"

namespace lumora {
namespace {

// Leaves a plain file at this path alone.
void createLibraryDirectory() {
  bool isDirectory = false;
  if (!platform::fileExistsAtPath(libraryDirectory, isDirectory)) {
    platform::createDirectoryAtPath(libraryDirectory);
  }
}

void startFirstWallpaper() {
  if (!getEnabled() || !getWallpaperSet()) return;
  const bool isSeparate = wallpaperMode() == WallpaperMode::Separate;
  setWallpaperAnimating(isSeparate ? ScreenLocation::LockScreen : ScreenLocation::Shared, true);
}

void setUp(platform::id application) {
  createTweakQueue();
  gateWallpapers();
  createLibraryDirectory();
  observeControlNotifications();
  platform::NSNotificationCenter_addObserver(application,
                                             platform::sel_registerName(deviceDidRotateSelector),
                                             "UIDeviceOrientationDidChangeNotification");
  startFirstWallpaper();
}

}  // namespace

void (*previousApplicationDidFinishLaunching)(platform::id self, platform::SEL selector,
                                              platform::id application) = nullptr;

void applicationDidFinishLaunching(platform::id self, platform::SEL selector,
                                   platform::id application) {
  previousApplicationDidFinishLaunching(self, selector, application);
  stoppingExceptions([self] { setUp(self); });
}

}  // namespace lumora
