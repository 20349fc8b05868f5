#include "platform/linux/images/blur/input_rows.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace platform::backend::blur {

InputRows::InputRows(const UIImage::Impl& picture, int left, int top, int width, int kept)
    : picture_(picture),
      left_(left),
      top_(top),
      width_(width),
      stride_(wholeBlocks(static_cast<std::size_t>(width) * channels)),
      rows_(stride_ * static_cast<std::size_t>(kept)),
      held_(static_cast<std::size_t>(kept), std::numeric_limits<int>::min()) {
  if (!picture.palette) return;
  const auto& colors = picture.palette->colors;
  premultiply(colors.front().data(), palette_.front().data(), maxColors);
}

const std::uint8_t* InputRows::row(int y) {
  const std::size_t slot = placeInTurn(y, static_cast<int>(held_.size()));
  std::uint8_t* const target = &rows_[slot * stride_];
  if (held_[slot] != y) {
    read(y, target);
    held_[slot] = y;
  }
  return target;
}

void InputRows::read(int y, std::uint8_t* target) const {
  const PictureShape& shape = picture_.shape;
  const int row = y + top_;
  const int first = std::clamp(-left_, 0, width_);
  const int end = std::clamp(shape.width - left_, first, width_);
  if (row < 0 || row >= shape.height || first > 0 || end < width_) {
    std::fill_n(target, stride_, std::uint8_t{0});
    if (row < 0 || row >= shape.height) return;
  }
  const std::uint8_t* source =
      picture_.row(row) + static_cast<std::size_t>(first + left_) * bytesPerPixel(shape.format);
  target += static_cast<std::size_t>(first) * channels;
  const auto count = static_cast<std::size_t>(end - first);
  if (shape.format == PixelFormat::RGBA) return premultiply(source, target, count);
  for (std::size_t x = 0; x < count; ++x) {
    std::memcpy(target + x * channels, palette_[source[x]].data(), channels);
  }
}

}  // namespace platform::backend::blur
