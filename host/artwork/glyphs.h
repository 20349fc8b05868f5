// Draws line symbols of one color, with one stroke weight on the same 24 by 24 grid. Units are
// points; the background is transparent.
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
  Flashlight,
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
  TrendLine,
  Wallet,
};

// Draws the glyph in one color into a square around center.
void drawGlyph(cairo_t* context, Glyph glyph, Point center, double side, const Color& color);

}  // namespace artwork
