// The host's dock height.
#pragma once

#include "platform/geometry.h"
#include "platform/objc_runtime.h"

namespace lumora {

// The dock class's own method, filled in when it is replaced.
extern platform::CGFloat (*previousDefaultDockHeight)(platform::id self, platform::SEL selector);

// Answers as the dock class itself does, and records the answer under "DOCK_HEIGHT". It runs
// whenever the host asks, on that thread, also before the work queue exists.
platform::CGFloat recordDefaultDockHeight(platform::id self, platform::SEL selector);

}  // namespace lumora
