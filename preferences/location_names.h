// What people call the locations of wallpapers.
#pragma once

#include <cctype>
#include <string>
#include <vector>

#include "settings/locations.h"

namespace preferences {

inline const std::vector<std::string> locationNames = {"shared", "lockscreen", "homescreen"};

// Returns the location with this name. Requires one of locationNames.
inline const lumora::Location& locationNamed(std::string name) {
  for (char& letter : name) letter = static_cast<char>(std::toupper(letter));
  return *lumora::locationWithIdentifier(name);
}

}  // namespace preferences
