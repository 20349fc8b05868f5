// Sizes and rectangles in the view system's coordinates: in points, x to the right, y down.
#pragma once

#include <type_traits>

namespace platform {

// 64 bits wide on 64-bit processors, 32 bits on 32-bit ones, as on the device.
using CGFloat = std::conditional_t<sizeof(void*) == 8, double, float>;

struct CGSize {
  CGFloat width = 0;
  CGFloat height = 0;
  friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
  CGFloat x = 0;
  CGFloat y = 0;
  CGFloat width = 0;
  CGFloat height = 0;
  friend bool operator==(const CGRect&, const CGRect&) = default;
};

}  // namespace platform
