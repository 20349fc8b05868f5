// Text files of the device, in UTF-8. Any thread; nothing here throws.
#pragma once

#include <optional>
#include <string>

namespace platform {

// Returns the contents of the file, or nothing if it cannot be read or is not valid UTF-8.
std::optional<std::string> stringWithContentsOfFile(const std::string& path);
// Replaces the file in a single rename. Returns false, with the file unchanged, if it cannot be
// written, if its directory does not exist or, on Linux, if the old file is too large to be read.
// Requires UTF-8.
bool writeStringToFileAtomically(const std::string& text, const std::string& path);

}  // namespace platform
