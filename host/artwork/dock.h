// The drawing of the dock: the favorite apps on a translucent plate. Units are points; the
// background is transparent, and the plate lets the picture behind it show through.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Draws four icons on a phone or six on a pad (pad), in a column when the dock is vertical and
// in a row otherwise. size is the whole strip along the screen's edge, the plate's margins
// included: 96 points thick on a phone, 110 on a pad.
void drawDock(cairo_t* context, Size size, bool vertical, bool pad);

}  // namespace artwork
