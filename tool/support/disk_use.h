// How much of the disk files take.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace tool {

// Returns the bytes that a folder and everything in it take. A file with several names in it counts
// once. What cannot be read counts nothing.
std::uint64_t diskUse(const std::filesystem::path& folder);

}  // namespace tool
