// The changes of settings that a settings program offers, and what it posts after each.
#pragma once

#include <string>
#include <vector>

#include "settings/locations.h"
#include "settings/settings_store.h"

namespace preferences {

struct Change {
  std::string key;
  std::string value;
  // The Darwin notifications that make a running home screen follow the change, in this order.
  std::vector<const char*> notifications;
};

// Settings that each location has. Values are texts as in settings/settings.def.
enum class LiveSetting { Speed, Alpha, Blur, Scaling };
Change changeOf(LiveSetting setting, const lumora::Location& location, const std::string& value);

Change changeOfMode(lumora::WallpaperMode mode);
// True: wallpapers leave room for the dock.
Change changeOfDock(bool isEnabled);
// Nothing is posted: a running home screen follows it when a wallpaper is shown the next time.
Change changeOfEnabled(bool isEnabled);

// Stores the new value. Throws as storeSetting does. The caller posts the notifications.
void store(const Change& change);

}  // namespace preferences
