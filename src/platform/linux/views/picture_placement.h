// The placement of an image in the view that shows it.
#pragma once

#include <algorithm>

#include "platform/geometry.h"
#include "platform/image.h"
#include "platform/view.h"

namespace platform::backend {

// Returns the rectangle of a picture in the coordinates of the view that shows it. It may reach
// beyond the view. Requires a picture that is not empty.
inline CGRect placementOfPicture(CGSize picture, CGSize size, UIViewContentMode mode) {
  const CGFloat across = size.width / picture.width;
  const CGFloat down = size.height / picture.height;
  if (mode == UIViewContentMode::ScaleToFill) return {0, 0, size.width, size.height};
  const bool fits = mode == UIViewContentMode::ScaleAspectFit;
  const CGFloat scale = fits ? std::min(across, down) : std::max(across, down);
  const CGFloat width = picture.width * scale;
  const CGFloat height = picture.height * scale;
  return {(size.width - width) / 2, (size.height - height) / 2, width, height};
}

inline CGRect placementOfPicture(const UIImage& image, CGSize size, UIViewContentMode mode) {
  const CGSize picture{static_cast<CGFloat>(image.width()), static_cast<CGFloat>(image.height())};
  return placementOfPicture(picture, size, mode);
}

}  // namespace platform::backend
