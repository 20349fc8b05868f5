// An app's icon and its place in a row. Units are points; the background is transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"

namespace artwork {

// The side of an icon on a phone or a pad.
double iconSide(bool pad);

// Where the item `index` of `count` begins when items of length `side` are spread over `length`
// with equal gaps between and around them. Grid and dock share it, so that their columns line up.
double spreadOffset(int index, int count, double side, double length);

// Draws the icon of `app` without its name: a rounded plate with a soft shadow, and the symbol.
void drawIcon(cairo_t* context, const App& app, Point topLeft, double side);

}  // namespace artwork
