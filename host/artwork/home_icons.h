// The drawing of the icons on the home screen. Units are points; the background is transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Fills {0, 0, area} with a grid of labeled app icons and, at its bottom center, the page dots.
// area is the part of the screen between the status bar and the dock. An upright phone has four
// columns; a wider area has more columns and fewer rows; a pad (pad) has larger icons and gaps.
void drawHomeIcons(cairo_t* context, Size area, bool pad);

}  // namespace artwork
