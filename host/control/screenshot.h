// Pictures of the screen. Main thread.
#pragma once

#include <cairo.h>

#include "host/home_screen/screen.h"

namespace host {

// Draws the screen over a surface, scale pixels to the point: all of it, or a part in pixels.
void drawScreen(Screen& screen, cairo_surface_t* surface, int scale);
void drawPartOfScreen(Screen& screen, cairo_surface_t* surface, int scale,
                      const cairo_rectangle_int_t& part);

// A PNG of what the screen shows now, in a file without a name whose descriptor the caller owns; -1
// if there is no memory for it.
int takeScreenshot(Screen& screen, int scale);

}  // namespace host
