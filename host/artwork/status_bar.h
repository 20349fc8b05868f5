// The drawing of the status bar, the strip along the top of the screen. Units are points; about 44
// high on an upright phone and 24 to 32 on a sideways phone or a pad. The background is
// transparent.
#pragma once

#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws in white: the time at the left; signal, wireless and battery symbols at the right. Type and
// symbols adapt to the height.
void drawStatusBar(cairo_t* context, Size size, const std::string& time);

}  // namespace artwork
