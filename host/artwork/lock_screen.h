// Draws the lock screen without its status bar. Units are points; the background is transparent
// except for soft gradients at the top and bottom edges.
#pragma once

#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/artwork/painting.h"

namespace artwork {

// Returns the parts of the screen in which the date and the time and in which the hint are drawn.
Rect lockScreenTop(Size screen);
Rect lockScreenBottom(Size screen);

// Draws over the screen {0, 0, size} the date, a large thin time, two round buttons (flashlight and
// camera), a hint on how to unlock, and the home bar. Fits any device, upright or on its side.
void drawLockScreen(cairo_t* context, Size size, const std::string& time, const std::string& date,
                    const Ink& top, const Ink& bottom);

}  // namespace artwork
