// A view of the host that draws its own content.
#pragma once

#include <cairo.h>

#include "platform/view.h"

namespace platform::backend {

class DrawnView : public UIView {
 public:
  // Draws the content, which is behind the subviews. The context's coordinates are points from the
  // view's top left corner; it is clipped to the view. Main thread. Must not throw.
  virtual void draw(cairo_t* context, CGSize size) = 0;
};

}  // namespace platform::backend
