// Computes where on the screen the animated views go. Any thread.
#pragma once

#include "platform/geometry.h"

namespace lumora {

// Returns the screen in points, in the status bar's orientation; an empty rectangle if there is no
// screen.
platform::CGRect screenRectangle();

// Returns the screen without the dock, which is at the right on a phone in landscape, otherwise at
// the bottom. Returns the whole screen if "DOCK_ENABLED" is off.
platform::CGRect rectangleBesideDock(const platform::CGRect& screen);

}  // namespace lumora
