// Draws the home bar at the bottom of the lock screen and of an app. Units are points; the
// background is transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/artwork/painting.h"

namespace artwork {

// Returns the bar's place on a screen of this size.
Rect homeBarOf(Size screen);

void drawHomeBar(cairo_t* context, Size screen, const Color& color);

}  // namespace artwork
