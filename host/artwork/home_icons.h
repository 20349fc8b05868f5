// Places and draws the icons of the home screen. Units are points; the background is transparent.
#pragma once

#include <vector>

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/artwork/icon.h"
#include "host/options/idiom.h"

namespace artwork {

// Returns the icons of the grid that drawHomeIcons draws.
std::vector<PlacedIcon> homeIcons(Size area, host::Idiom idiom);

// Fills {0, 0, area} with a grid of labeled app icons and, at its bottom center, the page dots.
// area: the part of the screen between the status bar and the dock. An upright phone has four
// columns; wider areas have more columns and fewer rows, and pads have larger icons and gaps. All
// apps are shown; the icons shrink where there is little room.
void drawHomeIcons(cairo_t* context, Size area, host::Idiom idiom, const Ink& ink);

}  // namespace artwork
