// A picture between the steps of a blur, in 16-bit values.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/linux/images/blur/rows.h"

namespace platform::backend::blur {

// A downsampled picture with a margin, into which the blur reaches; outside of that all is 0.
class Plane {
 public:
  // In pixels: as many as upsampling reads on each side.
  static constexpr int margin = 2;

  Plane(int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  // In values: the width with both margins, rounded up to whole blocks.
  std::size_t stride() const { return stride_; }

  // A row from the first pixel of its margin on. For any y outside of the plane and its margin,
  // this is a row of zeros.
  const Value* row(int y) const;
  // Requires a y within the plane and its margin.
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
