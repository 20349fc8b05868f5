// The invented apps of the home screen: their names, symbols, colors and pages.
#pragma once

#include <span>

#include "host/artwork/glyphs.h"
#include "host/artwork/painting.h"
#include "host/options/idiom.h"

namespace artwork {

// What an open app shows.
enum class Page {
  Journal,
  Messages,
  Recordings,
  Papers,
  Alarms,
  Pictures,
  Weather,
  Month,
  Chart,
  Switches
};

// An app as the home screen shows it.
struct App {
  const char* name;
  Glyph glyph;
  Page page;
  // The colors at the top and the bottom of the icon's plate.
  Color top;
  Color bottom;
  Color glyphColor = white;
};

// Returns the app that opens where none is chosen.
const App& usualApp();

// Return the apps of the dock, of which a pad has more, and all other apps. The apps are constants.
std::span<const App> dockApps(host::Idiom idiom);
std::span<const App> gridApps(host::Idiom idiom);

}  // namespace artwork
