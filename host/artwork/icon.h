// Draws an app's icon and computes its place in a row. Units are points; the background is
// transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"
#include "host/options/idiom.h"

namespace artwork {

// Returns the side of an icon.
double iconSide(host::Idiom idiom);

// Returns where item index begins if count items of length side are spread over a length with equal
// gaps between and around them. Grid and dock share this rule, so that their columns line up.
double spreadOffset(int index, int count, double side, double length);

// Draws the app's icon without its name: a symbol on a rounded plate with a soft shadow.
void drawIcon(cairo_t* context, const App& app, Point topLeft, double side);

}  // namespace artwork
