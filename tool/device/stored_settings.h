// The settings file as the settings program uses it: writes that are checked, and raw values.
#pragma once

#include <optional>
#include <string>

#include "settings/locations.h"

namespace tool {

// Throws Failure if the value does not arrive in the file.
void storeSetting(const std::string& key, const std::string& value);
// The same for a setting that each location has. key: what follows the location's identifier.
void storeSettingOf(const lumora::Location& location, const char* key, const std::string& value);

// Returns the stored text as it is, or nothing if there is none.
std::optional<std::string> storedSetting(const std::string& key);

}  // namespace tool
