// The user's settings: one property list that a settings program in another process changes at any
// time. Nothing is cached: every getter reads the whole file afresh, every write reads it, changes
// one key and replaces it whole. Any thread; nothing is locked, the last writer wins.
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
// Stored as a number.
using Length = platform::CGFloat;
using ScalingMode = std::string;
using Text = std::string;
}  // namespace setting_types

#define SETTING(type, getter, key, otherwise) setting_types::type getter();
#include "settings/settings.def"

// How the wallpapers are divided: one each for lock screen and home screen, or one for both. In any
// other mode the library shows none.
enum class WallpaperMode { Separate = 0, Shared = 1, None };

// Reads "MODE_INDEX" afresh, as getModeIndex does.
WallpaperMode wallpaperMode();

// The store's only write. A file that cannot be read is replaced by one with this key alone; a
// failed write leaves the file as it was.
void setPreferencesObjectKey(const std::string& object, const std::string& key);

}  // namespace lumora
