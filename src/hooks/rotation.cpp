#include "hooks/rotation.h"

#include "placement/installation.h"
#include "settings/settings_store.h"
#include "threads/exception_barrier.h"

namespace lumora {

// "ENABLED" is deliberately not read: a wallpaper that is disabled still follows the screen.
void LumoraDeviceDidRotate(platform::id /*self*/, platform::SEL /*selector*/,
                           platform::id /*notification*/) {
  stoppingExceptions([] {
    if (getWallpaperSet()) updateWallpaperImages();
  });
}

}  // namespace lumora
