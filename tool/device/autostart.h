// The files that start the wallpaper of the desktop at login: a systemd user unit, where there is a
// user manager, and an XDG autostart entry for all other sessions.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tool {

// Returns those of the files that exist.
std::vector<std::filesystem::path> autostartFiles();

// Writes the files, so that they perform this command. Returns their paths. Throws Failure if one
// cannot be written or a word cannot be part of one.
std::vector<std::filesystem::path> writeAutostart(const std::vector<std::string>& command);

// Deletes the files. Throws Failure if one cannot be deleted.
void removeAutostart();

}  // namespace tool
