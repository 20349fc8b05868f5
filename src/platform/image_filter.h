// The "CIGaussianBlur" filter. Its output is computed only where it is rendered. Any thread.
#pragma once

#include "platform/geometry.h"
#include "platform/image.h"

namespace platform {

// A filter's output. Coordinates are in pixels; (0, 0) is the input's top left corner.
class CIImage {
 public:
  // Returns the blur of input, which must not be nullptr. radius is the standard deviation in
  // pixels; 0 or less leaves the image as it is. Never fails.
  static CIImage gaussianBlur(const ImageRef& input, int radius);

  // Returns the rectangle of the output, which is larger than the input by the reach of the blur.
  // Returns an empty one if the system lacks the filter.
  CGRect extent() const;
  // Returns the part of the output in the rectangle; pixels outside of the extent are transparent.
  // Returns nullptr if memory runs out or if the system lacks the filter. Requires a rectangle that
  // is not empty.
  ImageRef render(CGRect rectangle) const;

 private:
  CIImage(ImageRef input, int radius);
  ImageRef input_;
  int radius_;
};

}  // namespace platform
