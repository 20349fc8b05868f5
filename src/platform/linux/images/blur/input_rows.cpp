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
      held_(static_cast<std::size_t>(kept), {std::numeric_limits<int>::min(), nullptr}) {
  if (!picture.palette) return;
  const auto& colors = picture.palette->colors;
  premultiply(colors.front().data(), palette_.front().data(), maxColors);
}

const std::uint8_t* InputRows::row(int y) {
  const std::size_t slot = placeInTurn(y, static_cast<int>(held_.size()));
  if (held_[slot].y != y) held_[slot] = {y, read(y, &rows_[slot * stride_])};
  return held_[slot].bytes;
}

// Returns where the row is: in room, or in the picture if no conversion is needed.
const std::uint8_t* InputRows::read(int y, std::uint8_t* room) const {
  const PictureShape& shape = picture_.shape;
  const int row = y + top_;
  const int first = std::clamp(-left_, 0, width_);
  const int end = std::clamp(shape.width - left_, first, width_);
  const bool isOutside = row < 0 || row >= shape.height;
  const bool isWhole = !isOutside && first == 0 && end == width_;
  if (!isWhole) std::fill_n(room, stride_, std::uint8_t{0});
  if (isOutside) return room;
  const std::size_t start = static_cast<std::size_t>(first + left_) * bytesPerPixel(shape.format);
  const std::uint8_t* source = picture_.row(row) + start;
  std::uint8_t* target = room + static_cast<std::size_t>(first) * channels;
  const auto count = static_cast<std::size_t>(end - first);
  if (shape.format == PixelFormat::RGBA) {
    if (isWhole && areOpaque(source, count) && hasStride(row, start)) return source;
    premultiply(source, target, count);
    return room;
  }
  for (std::size_t x = 0; x < count; ++x) {
    std::memcpy(target + x * channels, palette_[source[x]].data(), channels);
  }
  return room;
}

// Returns true if a whole stride can be read there, which in part belongs to the rows after it.
bool InputRows::hasStride(int row, std::size_t start) const {
  const int rows = picture_.shape.rowsPerStrip();
  const Strip& strip = *picture_.strips[static_cast<std::size_t>(row / rows)];
  const auto after = static_cast<std::size_t>(strip.rowCount() - row % rows);
  return start + stride_ <= after * (strip.rowLength() + 1) - 1;
}

}  // namespace platform::backend::blur
