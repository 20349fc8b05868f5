// Draws a view with all its subviews. Main thread.
#pragma once

#include <cairo.h>

#include "platform/view.h"

namespace platform::backend {

// The context counts in points from the corner of the view's superview.
void renderView(UIView& view, cairo_t* context);

}  // namespace platform::backend
