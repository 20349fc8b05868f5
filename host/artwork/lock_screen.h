// The lock screen's contents without its status bar. Units are points; the background is
// transparent apart from soft dark gradients at the top and bottom edges.
#pragma once

#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws, over the full screen of `size`, `date` and a large thin `time`, two round buttons (torch
// and camera), the hint how to open, and the home bar. Works upright and sideways, phone and pad.
void drawLockScreen(cairo_t* context, Size size, const std::string& time, const std::string& date);

}  // namespace artwork
