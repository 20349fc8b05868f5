#include "hooks/control_notifications.h"

#include "placement/gating.h"
#include "placement/installation.h"
#include "placement/removal.h"
#include "platform/notify_center.h"
#include "settings/wallpaper_intake.h"

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

// In the order of comparison.
constexpr Control controls[] = {
    {"com.brightfen.lumora.removeGIFFromAllWallpapers", removeGIFFromAllWallpapers},
    {"com.brightfen.lumora.wallpaperNeedsUpdating", wallpaperNeedsUpdating},
    {"com.brightfen.lumora.updateWallpaper", updateWallpaperImages},
    {"com.brightfen.lumora.removeSharedGIFView", removeSharedGIFView},
    {"com.brightfen.lumora.removeLockscreenGIFView", removeLockscreenGIFView},
    {"com.brightfen.lumora.removeHomescreenGIFView", removeHomescreenGIFView},
    {"com.brightfen.lumora.updateAnimating", updateAnimating},
};

// In the order of registration.
constexpr const char* observedNames[] = {
    "com.brightfen.lumora.wallpaperNeedsUpdating",
    "com.brightfen.lumora.removeGIFFromAllWallpapers",
    "com.brightfen.lumora.updateWallpaper",
    "com.brightfen.lumora.removeSharedGIFView",
    "com.brightfen.lumora.removeLockscreenGIFView",
    "com.brightfen.lumora.removeHomescreenGIFView",
    "com.brightfen.lumora.updateAnimating",
};

// The host side's registrations, apart from those of the views: they too have no observer, and a
// view that removes all such must not reach them.
platform::DarwinNotifyCenter& controlCenter() {
  static auto* center = new platform::DarwinNotifyCenter;
  return *center;
}

}  // namespace

void observeControlNotifications() {
  for (const char* name : observedNames) {
    controlCenter().addObserver(nullptr, name, handleSimpleLumoraMessage);
  }
}

void handleSimpleLumoraMessage(const std::string& name) {
  for (const Control& control : controls) {
    if (name != control.name) continue;
    control.action();
    return;
  }
}

}  // namespace lumora
