// Counts in messages.
#pragma once

#include <string>

namespace tool {

// Returns "1 frame" or "2 frames".
inline std::string countOfFrames(int count) {
  return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

}  // namespace tool
