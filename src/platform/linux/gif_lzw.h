// The variable-length LZW code of GIF image data.
#pragma once

#include <cstdint>
#include <span>

namespace platform::gif {

// Fills indices from a chain of data sub-blocks; false if the data end or go wrong before. Data
// past the last index wanted are not looked at. A full table stays at 12 bits and stops growing; a
// missing leading clear code or end code does no harm.
bool decodeLzw(std::span<const std::uint8_t> subBlocks, int minimumCodeSize,
               std::span<std::uint8_t> indices);

}  // namespace platform::gif
