#include "platform/linux/views/picture_placement.h"

#include <algorithm>
#include <cmath>

namespace platform::backend {

CGRect placementOfPicture(CGSize picture, CGSize size, UIViewContentMode mode) {
  const CGFloat across = size.width / picture.width;
  const CGFloat down = size.height / picture.height;
  if (mode == UIViewContentMode::ScaleToFill) return {0, 0, size.width, size.height};
  const bool fits = mode == UIViewContentMode::ScaleAspectFit;
  const CGFloat scale = fits ? std::min(across, down) : std::max(across, down);
  const CGFloat width = picture.width * scale;
  const CGFloat height = picture.height * scale;
  return {(size.width - width) / 2, (size.height - height) / 2, width, height};
}

CGRect placementOfPicture(const UIImage& image, CGSize size, UIViewContentMode mode) {
  const CGSize picture{static_cast<CGFloat>(image.width()), static_cast<CGFloat>(image.height())};
  return placementOfPicture(picture, size, mode);
}

Region pixelsOf(const CGRect& rectangle, const cairo_rectangle_int_t& bounds) {
  const auto within = [](CGFloat value, int first, int length) {
    return static_cast<int>(std::clamp<CGFloat>(value, first, first + length));
  };
  const int left = within(std::floor(rectangle.x), bounds.x, bounds.width);
  const int top = within(std::floor(rectangle.y), bounds.y, bounds.height);
  const int right = within(std::ceil(rectangle.x + rectangle.width), bounds.x, bounds.width);
  const int bottom = within(std::ceil(rectangle.y + rectangle.height), bounds.y, bounds.height);
  return Region({left, top, std::max(right - left, 0), std::max(bottom - top, 0)});
}

Region pixelsShowing(const Region& parts, CGSize picture, const CGRect& placement,
                     const cairo_rectangle_int_t& bounds) {
  const CGFloat across = placement.width / picture.width;
  const CGFloat down = placement.height / picture.height;
  // Scaling mixes neighboring pixels, of the picture or of the screen, whichever are larger.
  const auto reach = [](CGFloat scale) { return std::max(scale, CGFloat{2}) + 1; };
  Region pixels;
  for (const auto& part : parts.rectangles()) {
    const CGFloat x = placement.x + part.x * across - reach(across);
    const CGFloat y = placement.y + part.y * down - reach(down);
    pixels.add(pixelsOf(
        {x, y, part.width * across + 2 * reach(across), part.height * down + 2 * reach(down)},
        bounds));
  }
  return pixels;
}

}  // namespace platform::backend
