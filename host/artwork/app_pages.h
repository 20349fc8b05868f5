// Draws what is below the header of an open app. Units are points.
#pragma once

#include <cairo.h>

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"

namespace artwork {

// The distance from the edges of the screen.
inline constexpr double pageMargin = 20;

// Draws the page into the area, which may cut it off at the bottom. accent: the app's color.
void drawPage(cairo_t* context, Page page, const Rect& area, const Color& accent);

}  // namespace artwork
