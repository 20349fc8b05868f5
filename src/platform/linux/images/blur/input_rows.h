// Reads rows of an image as premultiplied bytes and keeps the last few of them. One thread at a
// time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/linux/images/blur/rows.h"
#include "platform/linux/images/picture/picture.h"

namespace platform::backend::blur {

class InputRows {
 public:
  // Pixel (0, 0) of the rows is the image's pixel (left, top). width is the rows' width in pixels.
  // Pixels outside of the image are 0. kept is the number of rows that stay valid. picture must
  // outlive this object. Throws std::bad_alloc.
  InputRows(const UIImage::Impl& picture, int left, int top, int width, int kept);

  // Returns the length of a row in bytes: that of its pixels, rounded up to whole blocks.
  std::size_t stride() const { return stride_; }
  // Returns the length in bytes without what is rounded up.
  std::size_t used() const { return static_cast<std::size_t>(width_) * channels; }
  // Returns a row, for any y. It is valid until row(y + n * kept) is requested, for any n but 0.
  // The bytes after its pixels have any value.
  const std::uint8_t* row(int y);

 private:
  struct Held {
    int y;
    const std::uint8_t* bytes;
  };
  const std::uint8_t* read(int y, std::uint8_t* room) const;
  bool hasStride(int row, std::size_t start) const;

  const UIImage::Impl& picture_;
  // Premultiplied; unused if the picture has no palette.
  std::array<RGBAColor, maxColors> palette_{};
  const int left_;
  const int top_;
  const int width_;
  std::size_t stride_;
  std::vector<std::uint8_t> rows_;
  std::vector<Held> held_;
};

}  // namespace platform::backend::blur
