#include "host/desktop/desktop_area.h"

#include <algorithm>

namespace host {
namespace {

using platform::CGFloat;
using platform::CGRect;

CGRect rectangleOf(const Output& output) {
  return {static_cast<CGFloat>(output.x), static_cast<CGFloat>(output.y),
          static_cast<CGFloat>(output.width), static_cast<CGFloat>(output.height)};
}

}  // namespace

CGRect areaOf(const Output& output, const std::vector<Output>& shown,
              const DesktopOptions& options) {
  CGRect area = rectangleOf(output);
  for (const Output& other : options.isSpanning ? shown : std::vector<Output>()) {
    const CGRect added = rectangleOf(other);
    const CGFloat right = std::max(area.x + area.width, added.x + added.width);
    const CGFloat bottom = std::max(area.y + area.height, added.y + added.height);
    area.x = std::min(area.x, added.x);
    area.y = std::min(area.y, added.y);
    area.width = right - area.x;
    area.height = bottom - area.y;
  }
  return {(area.x - output.x) * output.scale, (area.y - output.y) * output.scale,
          area.width * output.scale, area.height * output.scale};
}

}  // namespace host
