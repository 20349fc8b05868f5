// The settings file as the settings program uses it: writes that are checked, and raw values.
#pragma once

#include <optional>
#include <string>

#include "settings/screen_location.h"

namespace tool {

// Throws Failure if the value does not arrive in the file.
void storeSetting(const std::string& key, const std::string& value);

// The stored text, as it is; nothing if there is none.
std::optional<std::string> storedSetting(const std::string& key);

// The settings key of a location: "SHARED_" and so on before the given end.
std::string locationKey(lumora::ScreenLocation location, const std::string& end);

}  // namespace tool
