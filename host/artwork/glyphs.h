// Line symbols of a single colour, all drawn with one stroke weight on the same 24 by 24 raster.
// Units are points; the background is transparent.
#pragma once

#include <cairo.h>

#include "host/artwork/geometry.h"
#include "host/artwork/painting.h"

namespace artwork {

enum class Glyph {
  Book,
  Calendar,
  Camera,
  Chat,
  Clock,
  Envelope,
  Folder,
  Globe,
  House,
  Keypad,
  Map,
  Microphone,
  MusicNote,
  Pencil,
  Picture,
  Pulse,
  Sliders,
  SunAndCloud,
  Torch,
  TrendLine,
  Wallet,
};

// Draws `glyph` in the colour `ink`, as large as fits into the square around `center`.
void drawGlyph(cairo_t* context, Glyph glyph, Point center, double side, const Colour& ink);

}  // namespace artwork
