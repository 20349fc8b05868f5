// Draws the list of the window's keys. Units are points; the background is transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws the list on a dark plate in the middle of the screen {0, 0, size}. The plate's size is
// fixed.
void drawKeyHelp(cairo_t* context, Size size);

}  // namespace artwork
