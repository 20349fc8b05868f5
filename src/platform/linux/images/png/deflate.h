// The compression of PNG files and its checksums, by ISA-L. Any thread.
#pragma once

#include <cstdint>
#include <span>

#include "platform/data.h"

namespace platform::backend::png {

// Compresses to raw deflate that ends at a byte boundary, has no final block and refers to nothing
// before it: such pieces can be put together in any order. Throws std::bad_alloc.
Bytes deflatePiece(std::span<const std::uint8_t> raw);

// Returns true if the piece is valid and gives exactly as many bytes as there is room for.
bool inflatePiece(std::span<const std::uint8_t> deflated, std::span<std::uint8_t> room);

std::uint32_t adler32Of(std::span<const std::uint8_t> bytes);
std::uint32_t crc32Of(std::span<const std::uint8_t> bytes);
// Returns the CRC-32 of the bytes that gave crc, followed by these.
std::uint32_t continueCrc32(std::uint32_t crc, std::span<const std::uint8_t> bytes);

}  // namespace platform::backend::png
