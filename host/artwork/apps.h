// The apps of the home screen, all invented: their names, symbols and colors.
#pragma once

#include <span>

#include "host/artwork/glyphs.h"
#include "host/artwork/painting.h"
#include "host/options/idiom.h"

namespace artwork {

// An app as the home screen shows it.
struct App {
  const char* name;
  Glyph glyph;
  // The colors of the icon's plate at its top and its bottom.
  Color top;
  Color bottom;
  Color glyphColor = white;
};

// A pad's dock holds more apps than a phone's; the grid has those that are not in the dock.
std::span<const App> dockApps(host::Idiom idiom);
std::span<const App> gridApps(host::Idiom idiom);

}  // namespace artwork
