// An intermediate result of a blur, in 16-bit values.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/linux/images/blur/rows.h"

namespace platform::backend::blur {

// A downsampled image with a margin, into which the blur reaches. All pixels beyond that are 0.
class Plane {
 public:
  // The margin on each side, in pixels: as many as upsampling reads.
  static constexpr int margin = 2;

  // Starts with all values 0. width and height are in pixels, without the margin. Throws
  // std::bad_alloc.
  Plane(int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  // Returns the length of a row in values: the width with both margins, rounded up to whole blocks.
  std::size_t stride() const { return stride_; }

  // Returns a row, from the first pixel of its margin on. Returns a row of zeros if y is outside of
  // the plane and its margin.
  const Value* row(int y) const;
  // Returns a row to write to. Requires a y within the plane and its margin.
  Value* row(int y);

 private:
  std::size_t start(int y) const { return static_cast<std::size_t>(y + margin) * stride_; }

  int width_;
  int height_;
  std::size_t stride_;
  std::vector<Value> values_;
  std::vector<Value> zeros_;
};

}  // namespace platform::backend::blur
