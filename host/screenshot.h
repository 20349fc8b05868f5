// Pictures of the screen. Main thread.
#pragma once

#include <cstdint>
#include <vector>

#include <cairo.h>

#include "host/screen.h"

namespace host {

// Draws the screen over the whole of a surface, scale pixels to the point.
void drawScreen(Screen& screen, cairo_surface_t* surface, int scale);

// A PNG of what the screen shows now; empty if there is no memory for it.
std::vector<std::uint8_t> takeScreenshot(Screen& screen, int scale);

}  // namespace host
