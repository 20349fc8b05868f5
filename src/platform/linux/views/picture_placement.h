// Where a picture goes in the view that shows it.
#pragma once

#include <algorithm>

#include "platform/geometry.h"
#include "platform/image.h"
#include "platform/view.h"

namespace platform::backend {

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
