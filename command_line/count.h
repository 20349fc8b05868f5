// Counts in messages.
#pragma once

#include <string>

namespace command_line {

// Returns "1 frame" or "2 frames" for the noun "frame".
inline std::string countOf(int count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

inline std::string countOfFrames(int count) {
  return countOf(count, "frame");
}

}  // namespace command_line
