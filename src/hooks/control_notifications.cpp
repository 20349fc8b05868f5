#include "hooks/control_notifications.h"

#include "placement/gating.h"
#include "placement/installation.h"
#include "placement/removal.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"
#include "settings/wallpaper_intake.h"
#include "threads/exception_barrier.h"

namespace lumora {
namespace {

// The file is moved synchronously, so it is in place before the installation starts.
void wallpaperNeedsUpdating() {
  takeInWallpaperFile();
  updateWallpaperImages();
}

// Both are queued on tweakQueue, so the views are installed before they are resumed.
void updateAnimating() {
  updateWallpaperImages();
  resumeVisibleWallpapers();
}

struct Control {
  const char* name;
  void (*action)();
};

constexpr Control controls[] = {
    {control::wallpaperNeedsUpdating, wallpaperNeedsUpdating},
    {control::removeGIFFromAllWallpapers, removeGIFFromAllWallpapers},
    {control::updateWallpaper, updateWallpaperImages},
    {control::removeSharedGIFView, removeSharedGIFView},
    {control::removeLockscreenGIFView, removeLockscreenGIFView},
    {control::removeHomescreenGIFView, removeHomescreenGIFView},
    {control::updateAnimating, updateAnimating},
};

// Separate from the views' center, because these registrations have no observer: each new view
// would remove them (observeSettings of gifview/live_settings.h).
platform::DarwinNotifyCenter& controlCenter() {
  static auto* center = new platform::DarwinNotifyCenter;
  return *center;
}

}  // namespace

void observeControlNotifications() {
  for (const Control& each : controls) {
    controlCenter().addObserver(nullptr, each.name, handleSimpleLumoraMessage);
  }
}

void handleSimpleLumoraMessage(const std::string& name) {
  for (const Control& each : controls) {
    if (name != each.name) continue;
    stoppingExceptions(each.action);
    return;
  }
}

}  // namespace lumora
