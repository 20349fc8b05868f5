// Draws the screen and saves screenshots. Main thread.
#pragma once

#include <cairo.h>

#include "host/home_screen/screen.h"

namespace host {

// Draw the screen, or a part of it in pixels, on an image surface. scale: pixels per point.
void drawScreen(Screen& screen, cairo_surface_t* surface, int scale);
void drawPartOfScreen(Screen& screen, cairo_surface_t* surface, int scale,
                      const cairo_rectangle_int_t& part);

// Returns a descriptor of a PNG file without a name that shows the screen; the caller owns it.
// Returns -1 if there is not enough memory.
int takeScreenshot(Screen& screen, int scale);

}  // namespace host
