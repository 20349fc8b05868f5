// A view of the host's own that paints its content itself.
#pragma once

#include <cairo.h>

#include "platform/view.h"

namespace platform::backend {

class DrawnView : public UIView {
 public:
  // Paints the content behind the subviews. The context counts in points from the view's corner and
  // is clipped to the view.
  virtual void draw(cairo_t* context, CGSize size) = 0;
};

}  // namespace platform::backend
