#include "settings/locations.h"

#include "platform/file_manager.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"

namespace lumora {

constinit const std::array<Location, 3> locations = {{
    {
        .id = ScreenLocation::Shared,
        .identifier = "SHARED",
        .mode = WallpaperMode::Shared,
        .locationIndex = -1,
        .gifPath = sharedGIFPath,
        .incomingName = "SHARED_LUMORA_WALLPAPER.gif",
        .removalNotification = control::removeSharedGIFView,
        .wallpaperSetKey = "SHARED_WALLPAPER_SET",
        .getWallpaperSet = getSharedWallpaperSet,
        .getGIFSpeed = getSharedGIFSpeed,
        .getGIFAlpha = getSharedGIFAlpha,
        .getGIFBlur = getSharedGIFBlur,
        .getScalingMode = getSharedScalingMode,
    },
    {
        .id = ScreenLocation::LockScreen,
        .identifier = "LOCKSCREEN",
        .mode = WallpaperMode::Separate,
        .locationIndex = 0,
        .gifPath = lockscreenGIFPath,
        .incomingName = "LOCKSCREEN_LUMORA_WALLPAPER.gif",
        .removalNotification = control::removeLockscreenGIFView,
        .wallpaperSetKey = "LOCKSCREEN_WALLPAPER_SET",
        .getWallpaperSet = getLockscreenWallpaperSet,
        .getGIFSpeed = getLockscreenGIFSpeed,
        .getGIFAlpha = getLockscreenGIFAlpha,
        .getGIFBlur = getLockscreenGIFBlur,
        .getScalingMode = getLockscreenScalingMode,
    },
    {
        .id = ScreenLocation::HomeScreen,
        .identifier = "HOMESCREEN",
        .mode = WallpaperMode::Separate,
        .locationIndex = 1,
        .gifPath = homescreenGIFPath,
        .incomingName = "HOMESCREEN_LUMORA_WALLPAPER.gif",
        .removalNotification = control::removeHomescreenGIFView,
        .wallpaperSetKey = "HOMESCREEN_WALLPAPER_SET",
        .getWallpaperSet = getHomescreenWallpaperSet,
        .getGIFSpeed = getHomescreenGIFSpeed,
        .getGIFAlpha = getHomescreenGIFAlpha,
        .getGIFBlur = getHomescreenGIFBlur,
        .getScalingMode = getHomescreenScalingMode,
    },
}};

const Location* locationWithIdentifier(const std::string& identifier) {
  for (const Location& location : locations) {
    if (identifier == location.identifier) return &location;
  }
  return nullptr;
}

const Location* locationWithTag(int tag) {
  for (const Location& location : locations) {
    if (tag == static_cast<int>(location.id)) return &location;
  }
  return nullptr;
}

bool isSelectedInSettings(const Location& location) {
  if (!isUsed(location, wallpaperMode())) return false;
  return location.mode == WallpaperMode::Shared || location.locationIndex == getLocationIndex();
}

void deleteGIFAndFrameCache(const Location& location) {
  platform::removeItemAtPath(location.gifPath);
  platform::removeItemAtPath(platform::stringByDeletingPathExtension(location.gifPath));
}

}  // namespace lumora
