// Finds the part of the screen that must be drawn again because images have changed. All other
// changes redraw the whole screen, through RunLoop::setNeedsDisplay. Main thread.
#pragma once

#include <optional>

#include "platform/geometry.h"
#include "platform/view.h"

namespace platform::backend {

// Returns the part of the screen, in the root's coordinates, where images have changed since the
// last call. Returns nothing if none of them is visible or looks different.
std::optional<CGRect> takePictureDamage(const UIView& root);

}  // namespace platform::backend
