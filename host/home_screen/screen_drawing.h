// Draws the screen, also into PNG files. Main thread.
#pragma once

#include <cairo.h>

#include "host/home_screen/screen.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/views/region.h"

namespace host {

// Returns all pixels of the screen in its current orientation. scale: pixels per point.
cairo_rectangle_int_t pixelsOf(const Screen& screen, double scale);

// Draws a part of the screen, in pixels, on an image surface. scale: pixels per point.
void drawPartOfScreen(Screen& screen, cairo_surface_t* surface, double scale,
                      const platform::backend::Region& part);

// Returns an image surface with all of the screen, with the clocks updated.
DrawnSurface drawnScreen(Screen& screen, double scale);

// Return a descriptor, owned by the caller, of an unnamed file with an image surface's contents:
// a PNG, or rows of 4 bytes per pixel, as CAIRO_FORMAT_RGB24 has them. Return -1 if it cannot be
// made.
int pngOf(cairo_surface_t* surface);
int pixelFileOf(cairo_surface_t* surface);

}  // namespace host
