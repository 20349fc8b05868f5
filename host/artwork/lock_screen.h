// Draws the lock screen without its status bar. Units are points; the background is transparent
// except for soft dark gradients at the top and bottom edges.
#pragma once

#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws over the screen {0, 0, size} the date, a large thin time, two round buttons (flashlight and
// camera), a hint on how to unlock, and the home bar. Fits any device, upright or on its side.
void drawLockScreen(cairo_t* context, Size size, const std::string& time, const std::string& date);

}  // namespace artwork
