// The placement of an image in the view that shows it.
#pragma once

#include <algorithm>

#include "platform/geometry.h"
#include "platform/image.h"
#include "platform/view.h"

namespace platform::backend {

// Returns the image's rectangle in the coordinates of a view of this size. It may reach beyond the
// view.
inline CGRect placementOfPicture(const UIImage& image, CGSize size, UIViewContentMode mode) {
  const CGFloat across = size.width / image.width();
  const CGFloat down = size.height / image.height();
  if (mode == UIViewContentMode::ScaleToFill) return {0, 0, size.width, size.height};
  const bool fits = mode == UIViewContentMode::ScaleAspectFit;
  const CGFloat scale = fits ? std::min(across, down) : std::max(across, down);
  const CGFloat width = image.width() * scale;
  const CGFloat height = image.height() * scale;
  return {(size.width - width) / 2, (size.height - height) / 2, width, height};
}

}  // namespace platform::backend
