// Draws the status bar, the strip along the top of the screen. Units are points; it is about 44
// high on an upright phone and 24 to 32 on a pad or a phone on its side. The background is
// transparent.
#pragma once

#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/artwork/painting.h"

namespace artwork {

// Draws a text, usually the time, at the left and the signal, wireless and battery symbols at the
// right. Their size adapts to the height.
void drawStatusBar(cairo_t* context, Size size, const std::string& text, const Ink& ink);

}  // namespace artwork
