// Compression and checksums for PNG files, with ISA-L. Any thread.
#pragma once

#include <cstdint>
#include <span>

#include "platform/data.h"

namespace platform::backend::png {

// Compresses to raw deflate that ends at a byte boundary, has no final block and does not refer to
// bytes before it, so that pieces can be concatenated in any order. Throws std::bad_alloc.
Bytes deflatePiece(std::span<const std::uint8_t> raw);

// Decompresses a piece. Returns true if it is valid and fills the room exactly. Throws
// std::bad_alloc.
bool inflatePiece(std::span<const std::uint8_t> deflated, std::span<std::uint8_t> room);

std::uint32_t adler32Of(std::span<const std::uint8_t> bytes);
std::uint32_t crc32Of(std::span<const std::uint8_t> bytes);
// Returns the CRC-32 of these bytes after others whose CRC-32 is crc.
std::uint32_t continueCrc32(std::uint32_t crc, std::span<const std::uint8_t> bytes);

}  // namespace platform::backend::png
