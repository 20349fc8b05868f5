// Draws the card that explains the window's keys and gestures. Units are points; the background is
// transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws the card in the middle of the screen {0, 0, size}. It is smaller if the screen is.
void drawKeyHelp(cairo_t* context, Size size);

}  // namespace artwork
