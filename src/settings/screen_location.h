// Where a wallpaper shows. Not to be mixed up with the settings' own numberings: "MODE_INDEX" (1
// shared, 0 separate) and "LOCATION_INDEX" (0 lock screen, 1 home screen).
#pragma once

#include <string>

namespace lumora {

enum class ScreenLocation { Unknown = -1, Shared = 0, LockScreen = 1, HomeScreen = 2 };

// "SHARED", "LOCKSCREEN" or "HOMESCREEN"; "" for an unknown location. They name the views and their
// messaging centres and begin the per-location settings keys.
std::string identifierOf(ScreenLocation location);

// The location that an identifier names, Unknown for any other text.
ScreenLocation locationOfIdentifier(const std::string& identifier);

// The location whose number a view's tag is, Unknown for any other number.
ScreenLocation locationOfTag(int tag);

}  // namespace lumora
