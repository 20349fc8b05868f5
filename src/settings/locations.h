// Where wallpapers are shown, and what never changes about each place.
#pragma once

#include <array>
#include <string>

#include "settings/settings_store.h"

namespace lumora {

// The number of a location is the tag of the host's view there. Not to be mixed up with the numbers
// of "MODE_INDEX" and "LOCATION_INDEX".
enum class ScreenLocation { Unknown = -1, Shared = 0, LockScreen = 1, HomeScreen = 2 };

struct Location {
  ScreenLocation id;
  // Names the animated view and its messaging center.
  const char* identifier;
  // The mode in which it has a wallpaper.
  WallpaperMode mode;
  // The "LOCATION_INDEX" by which a settings program chooses it; -1 if that takes no part.
  std::int32_t locationIndex;
  // Its GIF in the library, and the file name of a new one.
  const char* gifPath;
  const char* incomingName;
  // The control notification that takes its wallpaper down.
  const char* removalNotification;
  // Its own rows of the settings.
  const char* wallpaperSetKey;
  bool (*getWallpaperSet)();
  float (*getGIFSpeed)();
  float (*getGIFAlpha)();
  float (*getGIFBlur)();
  std::string (*getScalingMode)();
};

// In the order of their numbers.
extern const std::array<Location, 3> locations;

// Returns nullptr for any other text or number.
const Location* locationWithIdentifier(const std::string& identifier);
const Location* locationWithTag(int tag);

}  // namespace lumora
