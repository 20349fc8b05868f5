// Points, sizes and rectangles of the artwork. Units are points, the origin is the top left corner
// and y grows downward; callers scale the Cairo context for the pixel density before they draw.
#pragma once

namespace artwork {

struct Point {
  double x;
  double y;
};

struct Size {
  double width;
  double height;
};

struct Rect {
  double x;
  double y;
  double width;
  double height;

  // Returns true if the point is in the rectangle or at most margin away from it.
  constexpr bool contains(Point point, double margin = 0) const {
    return point.x >= x - margin && point.x <= x + width + margin && point.y >= y - margin &&
           point.y <= y + height + margin;
  }
};

}  // namespace artwork
