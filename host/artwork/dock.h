// The drawing of the dock: the favorite apps on a translucent plate. Units are points; the
// background is transparent, and the plate lets the picture behind it show through.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/options/idiom.h"

namespace artwork {

// The edge of the screen that the dock stands at.
enum class DockEdge { Bottom, Right };

// Draws four icons on a phone or six on a pad, in a row at the bottom or in a column at the right.
// size: of the whole strip along the edge, the plate's margins included; it is 96 points thick on a
// phone, 110 on a pad.
void drawDock(cairo_t* context, Size size, DockEdge edge, host::Idiom idiom);

}  // namespace artwork
