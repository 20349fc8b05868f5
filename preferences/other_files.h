// Recognizes files that users take for a GIF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace preferences {

// How many bytes of a file are needed to recognize it.
constexpr std::size_t neededStart = 12;

// Returns what the file is instead of a GIF, and what to do. start: its first bytes.
std::string problemOfOtherFile(std::string_view start);

}  // namespace preferences
