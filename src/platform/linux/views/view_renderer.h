// Draws views with cairo. Main thread.
#pragma once

#include <cairo.h>

#include "platform/view.h"

namespace platform::backend {

// Draws a view with all its subviews. The context's coordinates are points from the top left corner
// of the view's superview. Images for which memory runs out are not drawn.
void renderView(UIView& view, cairo_t* context);

}  // namespace platform::backend
