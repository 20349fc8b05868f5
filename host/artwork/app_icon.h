// Draws the icon of Lumora, for windows and, through packaging/linux/draw_icon.cpp, for menus.
#pragma once

#include <cairo.h>

namespace artwork {

// Draws it into the square {0, 0, side, side}. The background is transparent.
void drawAppIcon(cairo_t* context, double side);

}  // namespace artwork
