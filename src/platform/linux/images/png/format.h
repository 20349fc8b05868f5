// Constants of PNG files, used by the writer and the reader.
//
// In the writer's files, the compressed pixels are divided into these data chunks: one with the two
// bytes of the zlib header, one for each strip, which can be decompressed by itself, and one with
// an empty final block and the checksum.
#pragma once

#include <array>
#include <cstdint>

namespace platform::backend::png {

constexpr std::array<std::uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

using ChunkName = std::array<std::uint8_t, 4>;
constexpr ChunkName headerChunk{'I', 'H', 'D', 'R'};
constexpr ChunkName paletteChunk{'P', 'L', 'T', 'E'};
constexpr ChunkName alphaChunk{'t', 'R', 'N', 'S'};
constexpr ChunkName dataChunk{'I', 'D', 'A', 'T'};
constexpr ChunkName endChunk{'I', 'E', 'N', 'D'};

// Deflate with a window of 32 KiB, compressed with the fastest method.
constexpr std::array<std::uint8_t, 2> zlibHeader{0x78, 0x01};
constexpr std::array<std::uint8_t, 2> emptyFinalBlock{0x03, 0x00};

}  // namespace platform::backend::png
