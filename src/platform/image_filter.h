// The "CIGaussianBlur" filter. Its output is computed only where it is rendered. Any thread.
#pragma once

#include "platform/geometry.h"
#include "platform/image.h"

namespace platform {

// A filter's output. Coordinates are pixels, (0, 0) is the input's corner; the extent reaches past
// the input by as far as the blur carries it.
class CIImage {
 public:
  // radius: the standard deviation in pixels; 0 and less leave the picture as it is.
  static CIImage gaussianBlur(const ImageRef& input, int radius);

  CGRect extent() const;
  // The part of the output that the rectangle covers; where there is none, transparent. nullptr if
  // the memory does not suffice.
  ImageRef render(CGRect rectangle) const;

 private:
  CIImage(ImageRef input, int radius);
  ImageRef input_;
  int radius_;
};

}  // namespace platform
