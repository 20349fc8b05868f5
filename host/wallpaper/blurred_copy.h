// Small blurred copies of what has been drawn. Main thread.
#pragma once

#include "host/wallpaper/drawn_surface.h"

namespace host {

// Returns an opaque copy of an image surface without small details. details: how many may remain
// along its longer side, at least 2; the copy has 16 pixels for each.
DrawnSurface blurredCopy(cairo_surface_t* source, int details);

}  // namespace host
