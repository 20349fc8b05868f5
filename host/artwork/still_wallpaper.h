// The drawing of the still wallpapers, which animated ones replace: three related landscapes of
// soft layers at dusk, for any aspect ratio. Units are points; the result is opaque.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

enum class Still {
  // Layered hills under a low sun; lock and home screen show the same picture.
  Shared,
  // A starry night with a moon above misty ridges.
  LockScreen,
  // Broad calm folds of color, without any detail behind the icons.
  HomeScreen,
};

// Covers {0, 0, size} with the landscape.
void drawStillWallpaper(cairo_t* context, Size size, Still still);

}  // namespace artwork
