// Places and draws the dock: the favorite apps on a plate of frosted glass. Units are points; the
// background is transparent.
#pragma once

#include <functional>
#include <vector>

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/artwork/icon.h"
#include "host/options/idiom.h"

namespace artwork {

// The edge of the screen along which the dock is.
enum class DockEdge { Bottom, Right };

// Returns the icons that drawDock draws.
std::vector<PlacedIcon> dockIcons(Size size, DockEdge edge, host::Idiom idiom);

// Draws four icons on a phone or six on a pad, in a row at the bottom or in a column at the right.
// size: the whole strip along the edge, including the plate's margins. It is designed for a strip
// of 96 points on a phone and 110 on a pad. drawBehind draws what the plate lets through.
// tint: the color in which it stands out from that.
void drawDock(cairo_t* context, Size size, DockEdge edge, host::Idiom idiom, const Color& tint,
              const std::function<void()>& drawBehind);

}  // namespace artwork
