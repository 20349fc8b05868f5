// The user's settings: a property list that the settings program, another process, may change at
// any time. Nothing is cached: each getter reads the whole file, and each write reads it, changes
// one key and replaces it. Any thread. Of two writers of the same key, the last one wins; on the
// phone, the last writer of the file.
//
// The getters, with their keys and defaults, are in settings.def.
#pragma once

#include <cstdint>
#include <string>

#include "platform/geometry.h"

namespace lumora {

namespace setting_types {
using Boolean = bool;
using Integer = std::int32_t;
using Number = float;
// In points.
using Length = platform::CGFloat;
using ScalingMode = std::string;
using Text = std::string;
}  // namespace setting_types

#define SETTING(type, getter, key, otherwise) setting_types::type getter();
#include "settings/settings.def"

// Separate: one wallpaper for the lock screen and one for the home screen. Shared: one for both.
// None, for any other number: the library shows no wallpaper.
enum class WallpaperMode { Separate = 0, Shared = 1, None };

// Returns "separate", "shared" or "none".
constexpr const char* nameOf(WallpaperMode mode) {
  if (mode == WallpaperMode::Separate) return "separate";
  return mode == WallpaperMode::Shared ? "shared" : "none";
}

// Returns the mode that a value of "MODE_INDEX" stands for, or the stored one.
WallpaperMode modeWithIndex(std::int32_t index);
WallpaperMode wallpaperMode();

// Stores object under key, the only way in which the library changes settings. Replaces a file that
// is missing or damaged by one with this key alone. If the file cannot be written or is too large
// to be read, it stays as it was, silently.
void setPreferencesObjectKey(const std::string& object, const std::string& key);

}  // namespace lumora
