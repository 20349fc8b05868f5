// Sizes of files in messages.
#pragma once

#include <cstdint>
#include <string>

namespace command_line {

// Returns a size such as "12.3 MB".
std::string textOfSize(std::uint64_t bytes);

}  // namespace command_line
