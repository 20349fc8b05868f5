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

// The file work is done before the installation that shows it can start.
void wallpaperNeedsUpdating() {
  takeInWallpaperFile();
  updateWallpaperImages();
}

// Both run on tweakQueue, so the installation has finished when the sweep looks.
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

// The host side's registrations, apart from those of the views: they too have no observer, and a
// view that removes all such must not reach them.
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
