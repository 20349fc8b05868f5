// The variable-length LZW code of GIF image data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "platform/linux/images/gif/file.h"

namespace platform::backend::gif {

// Room for an image's indices, used again from image to image. In front of them lie all the single
// bytes, behind them is space to spare: so the decoder can take every string, even one of a single
// index, from the buffer itself, and copy it in whole vectors.
class IndexBuffer {
 public:
  // Throws std::bad_alloc.
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

// Fills the buffer's indices from an image's data. Returns how many could be decoded: fewer than
// the buffer has where the data end early or go wrong; the others have no value then. Data past the
// last index wanted are not looked at. A full table stays at 12 bits and stops growing; a missing
// leading clear code or end code does no harm.
std::size_t decodeLzw(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer);

// Decodes one image of a file. Returns how many of its rows are whole; 0 also for an image that is
// empty or too large to hold. Throws std::bad_alloc.
int decodeImage(const NSData::Impl& data, const SubImage& image, IndexBuffer& buffer);

}  // namespace platform::backend::gif
