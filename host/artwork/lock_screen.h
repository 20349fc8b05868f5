// The drawing of the lock screen, without its status bar. Units are points; the background is
// transparent apart from soft dark gradients at the top and bottom edges.
#pragma once

#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws, over the full screen {0, 0, size}, the date and a large thin time, two round buttons
// (flashlight and camera), a hint on how to open it, and the home bar. For any kind of device,
// upright or sideways.
void drawLockScreen(cairo_t* context, Size size, const std::string& time, const std::string& date);

}  // namespace artwork
