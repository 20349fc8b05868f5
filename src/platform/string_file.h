// Text files of the device, in UTF-8. Any thread; nothing here throws.
#pragma once

#include <optional>
#include <string>

namespace platform {

// The whole file; nothing if it cannot be read or is not valid UTF-8.
std::optional<std::string> stringWithContentsOfFile(const std::string& path);
// The new file replaces the old one in one rename; false if the file stays as it was.
bool writeStringToFileAtomically(const std::string& text, const std::string& path);

}  // namespace platform
