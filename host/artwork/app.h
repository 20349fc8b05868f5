// The drawing of an opened app, which hides everything behind it. Units are points; the result is
// opaque.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Covers the full screen {0, 0, size} with a journal: a heading and a list of short entries. The
// top of the screen is dark and free, so that a white status bar fits there; it shows no clock.
void drawApp(cairo_t* context, Size size);

}  // namespace artwork
