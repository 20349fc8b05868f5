// Sizes and rectangles of the artwork. Units are points, the origin is the top left corner and y
// grows downward; callers scale the Cairo context for the pixel density before they draw.
#pragma once

namespace artwork {

struct Size {
  double width;
  double height;
};

struct Rect {
  double x;
  double y;
  double width;
  double height;
};

}  // namespace artwork
