// Draws the still wallpapers, which are shown without a GIF: three related landscapes at dusk, for
// any aspect ratio. Units are points; the result is opaque.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

enum class Still {
  // Layered hills under a low sun, for both screens.
  Shared,
  // A starry night with a moon above misty ridges.
  LockScreen,
  // Broad calm folds of color, without any detail behind the icons.
  HomeScreen,
};

// Fills {0, 0, size} with the landscape.
void drawStillWallpaper(cairo_t* context, Size size, Still still);

}  // namespace artwork
