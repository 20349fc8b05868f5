// A blurred copy of what a wallpaper showed at one moment. Plates of frosted glass are painted with
// it, and colors are chosen that are readable on it. Both stay as they are while the wallpaper
// plays. Units are points of the screen. Main thread.
#pragma once

#include "host/artwork/geometry.h"
#include "host/wallpaper/drawn_surface.h"

namespace host {

class Glimpse {
 public:
  // shown: an image surface of 32-bit pixels with the screen, whose size is in points.
  Glimpse(cairo_surface_t* shown, artwork::Size size);

  // Returns the mean brightness, from 0 to 1, of an area of the screen; 0 if it is empty.
  double brightness(const artwork::Rect& area) const;
  // Paints the whole screen, with its corner at the context's origin.
  void paint(cairo_t* context) const;

 private:
  DrawnSurface copy_;
  // Pixels of the copy per point.
  double scaleX_;
  double scaleY_;
};

}  // namespace host
