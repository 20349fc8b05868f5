// An app's icon and its place in a row. Units are points; the background is transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"
#include "host/options/idiom.h"

namespace artwork {

// The side of an icon on a phone or a pad.
double iconSide(host::Idiom idiom);

// Where an item begins, given its index, when count items are spread over a length with equal gaps
// between and around them. side: the length of an item. Grid and dock share this rule, so that
// their columns line up.
double spreadOffset(int index, int count, double side, double length);

// Draws the app's icon without its name: a rounded plate with a soft shadow, and the symbol.
void drawIcon(cairo_t* context, const App& app, Point topLeft, double side);

}  // namespace artwork
