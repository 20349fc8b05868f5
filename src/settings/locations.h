// The places where wallpapers are shown, with the names and settings of each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "settings/settings_store.h"

namespace lumora {

// The numbers are the tags of the host's views. They are unrelated to those of "MODE_INDEX" and
// "LOCATION_INDEX".
enum class ScreenLocation { Unknown = -1, Shared = 0, LockScreen = 1, HomeScreen = 2 };

struct Location {
  ScreenLocation id;
  // Names the animated view and its messaging center.
  const char* identifier;
  // The mode in which the location has a wallpaper.
  WallpaperMode mode;
  // The value of "LOCATION_INDEX" that selects the location; -1 for the shared one.
  std::int32_t locationIndex;
  // The path of its GIF in the library directory, and the file name of a newly chosen GIF for it.
  const char* gifPath;
  const char* incomingName;
  // The control notification that removes its wallpaper.
  const char* removalNotification;
  // Its settings: a key, and getters of settings.def.
  const char* wallpaperSetKey;
  bool (*getWallpaperSet)();
  float (*getGIFSpeed)();
  float (*getGIFAlpha)();
  float (*getGIFBlur)();
  std::string (*getScalingMode)();
};

// In the order of ScreenLocation.
extern const std::array<Location, 3> locations;

// Returns the location. Requires one other than Unknown. Any thread.
inline const Location& locationOf(ScreenLocation id) {
  return locations[static_cast<std::size_t>(id)];
}

// Return the location, or nullptr if there is none with this identifier or tag. Any thread.
const Location* locationWithIdentifier(const std::string& identifier);
const Location* locationWithTag(int tag);

// Returns true if the location has a wallpaper in this mode.
inline bool isUsed(const Location& location, WallpaperMode mode) {
  return location.mode == mode;
}

// Returns true if "MODE_INDEX" and, in separate mode, "LOCATION_INDEX" select the location. Reads
// the settings file. Any thread.
bool isSelectedInSettings(const Location& location);

// Deletes the location's GIF and its frame cache. Failures are silent. Any thread.
void deleteGIFAndFrameCache(const Location& location);

}  // namespace lumora
