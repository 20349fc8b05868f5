// Arithmetic of rectangles of whole pixels.
#pragma once

#include <algorithm>
#include <optional>

#include <cairo.h>

namespace host {

// Returns the smallest rectangle that contains both.
inline cairo_rectangle_int_t unionOf(const std::optional<cairo_rectangle_int_t>& one,
                                     const cairo_rectangle_int_t& other) {
  if (!one) return other;
  const int left = std::min(one->x, other.x);
  const int top = std::min(one->y, other.y);
  return {left, top, std::max(one->x + one->width, other.x + other.width) - left,
          std::max(one->y + one->height, other.y + other.height) - top};
}

}  // namespace host
