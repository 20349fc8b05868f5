// The compression of PNG files and its checksums, by ISA-L. Any thread.
#pragma once

#include <cstdint>
#include <span>

#include "platform/data.h"

namespace platform {

// Raw deflate that ends at a byte's border, without a final block, and refers to nothing in front:
// such pieces can be put together in any order. Throws std::bad_alloc.
Bytes deflatePiece(std::span<const std::uint8_t> raw);

// Whether the piece was sound and gave exactly as many bytes as there is room for.
bool inflatePiece(std::span<const std::uint8_t> deflated, std::span<std::uint8_t> room);

std::uint32_t adler32(std::span<const std::uint8_t> bytes);
// Continues the checksum of what lies in front; 0 begins one.
std::uint32_t crc32(std::uint32_t before, std::span<const std::uint8_t> bytes);

}  // namespace platform
