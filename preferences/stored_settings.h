// Reads and writes the settings file as the settings app does: text values, with checked writes.
#pragma once

#include <optional>
#include <string>

namespace preferences {

// Stores a setting. Throws Failure if it cannot be stored, with ExitCode::WrongUse if the text
// cannot be part of a property list.
void storeSetting(const std::string& key, const std::string& value);
// Returns the stored text, or nothing if there is none.
std::optional<std::string> storedSetting(const std::string& key);

}  // namespace preferences
