// Pictures between the steps of a blur, and the work on them, by bands of rows on two threads.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

#include "platform/linux/images/blur/rows.h"
#include "platform/linux/images/picture/picture.h"

namespace platform::backend::blur {

// A picture that has been halved some times. It has a margin, into which the blur reaches; outside
// of that all is 0.
class Plane {
 public:
  // As many pixels as doubling looks at.
  static constexpr int margin = 2;

  Plane(int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  // In values, margins included; with room for whole blocks.
  std::size_t stride() const { return stride_; }

  // From the first pixel of the margin on. y may be anything; outside it is a row of zeros.
  const Value* row(int y) const;
  Value* row(int y);

 private:
  std::size_t start(int y) const { return static_cast<std::size_t>(y + margin) * stride_; }

  int width_;
  int height_;
  std::size_t stride_;
  std::vector<Value> values_;
  std::vector<Value> zeros_;
};

// The rows of a picture, premultiplied, as they come by: only the last few are kept.
class InputRows {
 public:
  // width, height: of the part of the plane that is looked at; (left, top): where its corner lies
  // in the picture. Outside of the picture all is 0.
  InputRows(const UIImage::Impl& picture, int left, int top, int width, int kept);

  std::size_t stride() const { return stride_; }
  // Valid until `kept` rows further on.
  const std::uint8_t* row(int y);

 private:
  void read(int y, std::uint8_t* target) const;

  const UIImage::Impl& picture_;
  // The picture's colours, premultiplied, if it has a palette.
  std::array<RGBAColor, maxColors> palette_{};
  const int left_;
  const int top_;
  const int width_;
  std::size_t stride_;
  std::vector<std::uint8_t> rows_;
  std::vector<int> held_;
};

// Runs work(first, end) over rows [first, end), in two halves at once if they are many.
void inBands(int first, int end, const std::function<void(int first, int end)>& work);

}  // namespace platform::backend::blur
