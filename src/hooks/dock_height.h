// Records the height of the host's dock.
#pragma once

#include "platform/geometry.h"
#include "platform/objc_runtime.h"

namespace lumora {

// The dock class's original method, set when it is replaced.
extern platform::CGFloat (*previousDefaultDockHeight)(platform::id self, platform::SEL selector);

// Replaces the dock class's method: returns what the original returns, in points, and stores it
// under "DOCK_HEIGHT"; failure to store it is silent. Called on any thread, also before tweakQueue
// exists.
platform::CGFloat recordDefaultDockHeight(platform::id self, platform::SEL selector);

}  // namespace lumora
