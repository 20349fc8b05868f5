// Reads the rows of a picture one after the other, premultiplied, and keeps the last few of them.
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
  // picture must outlive this object. (left, top): where pixel (0, 0) of the rows is in the
  // picture; width: of the rows, in pixels. Outside of the picture all is 0. kept: how many rows
  // stay valid.
  InputRows(const UIImage::Impl& picture, int left, int top, int width, int kept);

  // In values: the width, rounded up to whole blocks.
  std::size_t stride() const { return stride_; }
  // For any y. Valid until row(y + kept) or row(y - kept) is asked for.
  const std::uint8_t* row(int y);

 private:
  void read(int y, std::uint8_t* target) const;

  const UIImage::Impl& picture_;
  // Premultiplied; unused if the picture has no palette.
  std::array<RGBAColor, maxColors> palette_{};
  const int left_;
  const int top_;
  const int width_;
  std::size_t stride_;
  std::vector<std::uint8_t> rows_;
  std::vector<int> held_;
};

}  // namespace platform::backend::blur
