// Where desktop programs keep a user's files.
#pragma once

#include <filesystem>

namespace tool {

// Returns the directory that the environment variable names, such as "XDG_DATA_HOME", or else the
// one below the user's home. The freedesktop.org rules for base directories ignore relative paths.
// Throws Failure if HOME is needed and not set.
std::filesystem::path userDirectory(const char* variable, const char* belowHome);

}  // namespace tool
