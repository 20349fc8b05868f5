// The placement of an image in the view that shows it.
#pragma once

#include "platform/geometry.h"
#include "platform/image.h"
#include "platform/linux/views/region.h"
#include "platform/view.h"

namespace platform::backend {

// Returns the rectangle of a picture in the coordinates of the view that shows it. It may reach
// beyond the view. Requires a picture that is not empty.
CGRect placementOfPicture(CGSize picture, CGSize size, UIViewContentMode mode);
CGRect placementOfPicture(const UIImage& image, CGSize size, UIViewContentMode mode);

// Returns the pixels, within the bounds, that are at least partly in the rectangle.
Region pixelsOf(const CGRect& rectangle, const cairo_rectangle_int_t& bounds);

// Returns the pixels, within the bounds, in which these parts of a picture have a share. placement:
// the rectangle of the picture in pixels.
Region pixelsShowing(const Region& parts, CGSize picture, const CGRect& placement,
                     const cairo_rectangle_int_t& bounds);

}  // namespace platform::backend
