// Draws the body of the device around its screen. Units are points.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Where the upper end of the device points.
enum class DeviceTop { Up, Right, Down, Left };

// Draws the body around the screen {0, 0, screen}, which it may paint over, with a camera at its
// upper end. thickness: of the body beside the screen, including keys that stand out.
void drawDeviceFrame(cairo_t* context, Size screen, double thickness, DeviceTop top);

// The side of a square that contains a corner of the screen.
inline constexpr double screenCornerSide = 34;

// Draws the body over the corners of the screen, which are round.
void drawScreenCorners(cairo_t* context, Size screen);

}  // namespace artwork
