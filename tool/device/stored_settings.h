// The settings file as the settings program uses it: writes that are checked, and raw values.
#pragma once

#include <optional>
#include <string>

namespace tool {

// Throws Failure if the value does not arrive in the file.
void storeSetting(const std::string& key, const std::string& value);

// The stored text, as it is; nothing if there is none.
std::optional<std::string> storedSetting(const std::string& key);

}  // namespace tool
