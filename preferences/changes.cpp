#include "preferences/changes.h"

#include "preferences/stored_settings.h"
#include "settings/notification_names.h"

namespace preferences {
namespace {

struct KeyAndNotification {
  // Follows the location's identifier.
  const char* key;
  const char* notification;
};

// Indexed by LiveSetting.
constexpr KeyAndNotification liveSettings[] = {
    {"_GIF_SPEED", lumora::speedNeedsUpdatingNotification},
    {"_GIF_ALPHA", lumora::alphaNeedsUpdatingNotification},
    {"_GIF_BLUR", lumora::blurNeedsUpdatingNotification},
    {"_SCALING_MODE", lumora::control::updateWallpaper},
};

const char* textOf(bool isTrue) {
  return isTrue ? "TRUE" : "FALSE";
}

}  // namespace

Change changeOf(LiveSetting setting, const lumora::Location& location, const std::string& value) {
  const auto [key, notification] = liveSettings[static_cast<std::size_t>(setting)];
  return {std::string(location.identifier) + key, value, {notification}};
}

Change changeOfMode(lumora::WallpaperMode mode) {
  return {"MODE_INDEX",
          std::to_string(static_cast<int>(mode)),
          {lumora::removeUnneededViewNotification, lumora::control::updateAnimating}};
}

Change changeOfDock(bool isEnabled) {
  return {"DOCK_ENABLED", textOf(isEnabled), {lumora::control::updateWallpaper}};
}

Change changeOfEnabled(bool isEnabled) {
  return {"ENABLED", textOf(isEnabled), {}};
}

void store(const Change& change) {
  storeSetting(change.key, change.value);
}

}  // namespace preferences
