// Decodes the variable-length LZW codes of GIF image data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "platform/linux/images/gif/file.h"

namespace platform::backend::gif {

// A buffer for an image's indices, reused from image to image. The decoder copies each string from
// where the buffer has it, so the buffer starts with the 256 strings of a single index. It copies
// whole vectors, so there is spare room after those strings and after the indices.
class IndexBuffer {
 public:
  // Makes room for count indices, whose values are undefined. If it throws std::bad_alloc, it must
  // be called again before the buffer is used.
  void reset(std::size_t count);

  std::span<const std::uint8_t> indices() const { return {start(), count_}; }

 private:
  friend class LzwDecoder;
  static constexpr std::size_t singles = 256;
  static constexpr std::size_t spare = 64;

  std::uint8_t* start() const { return bytes_.get() + singles + spare; }

  std::unique_ptr<std::uint8_t[]> bytes_;
  std::size_t capacity_ = 0;
  std::size_t count_ = 0;
};

// Fills the buffer's indices from an image's data. Returns how many could be decoded, which is
// fewer than the buffer's count if the data are incomplete or damaged; the others are undefined
// then. Data after the last index are ignored. A full code table stays at 12 bits and stops
// growing. The first clear code and the end code may be missing. Returns 0 unless
// minimumCodeSize is from 1 to 8.
std::size_t decodeLzw(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer);

// Decodes an image of a file. Returns the number of its complete rows, in the
// order of the file, and 0 for an image that is
// empty or too large. Counts damage if rows are missing. Throws std::bad_alloc.
int decodeImage(const NSData::Impl& data, const SubImage& image, IndexBuffer& buffer);

}  // namespace platform::backend::gif
