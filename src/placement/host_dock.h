// Access to the host's dock, by name at run time.
#pragma once

#include "platform/geometry.h"

namespace lumora {

// Returns the default height of the host's dock, in points; 0 if the host lacks the class or the
// method. The library has replaced this method, so each call also stores the height under
// "DOCK_HEIGHT" (hooks/dock_height.h). Any thread.
platform::CGFloat defaultDockHeight();

}  // namespace lumora
