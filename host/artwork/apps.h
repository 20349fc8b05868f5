// The invented apps of the home screen.
#pragma once

#include <span>

#include "host/artwork/glyphs.h"
#include "host/artwork/painting.h"

namespace artwork {

struct App {
  const char* name;
  Glyph glyph;
  Colour top;  // The icon's plate runs from `top` to `bottom`.
  Colour bottom;
  Colour ink = kWhite;
};

// A pad's dock holds more apps than a phone's; the grid has those that the dock has not.
std::span<const App> dockApps(bool pad);
std::span<const App> gridApps(bool pad);

}  // namespace artwork
