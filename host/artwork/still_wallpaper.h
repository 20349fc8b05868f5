// The home screen's own still wallpaper, which an animated one replaces. Three related dusk
// landscapes of soft layers fill the whole size (points) at any aspect ratio. The result is opaque.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

enum class Still {
  Shared,      // Layered hills under a low sun: lock and home screen show the same picture.
  LockScreen,  // A starry night with a moon above misty ridges.
  HomeScreen,  // Broad calm folds of colour, without any detail behind the icons.
};

// Covers {0, 0, size} with the scene `still`.
void drawStillWallpaper(cairo_t* context, Size size, Still still);

}  // namespace artwork
