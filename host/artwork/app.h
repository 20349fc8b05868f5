// Draws an open app. Units are points; the result is opaque.
#pragma once

#include <cairo.h>

#include "host/artwork/apps.h"
#include "host/artwork/geometry.h"

namespace artwork {

// Fills the screen {0, 0, size} with the app: its name, its page and the home bar. The top is dark
// and empty, so that a white status bar is readable there.
void drawApp(cairo_t* context, Size size, const App& app);

}  // namespace artwork
