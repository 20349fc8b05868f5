// Finds the part of the screen that must be drawn again because images have changed. All other
// changes redraw the whole screen, through RunLoop::setNeedsDisplay. Main thread.
#pragma once

#include <memory>
#include <optional>

#include "platform/geometry.h"
#include "platform/image_view.h"

namespace platform::backend {

// Records that the view shows another image, and requests display.
void notePictureChanged(const std::shared_ptr<UIImageView>& view);

// Returns the part of the screen, in the root's coordinates, where images have changed since the
// last call. Returns nothing if none of them is visible or looks different.
std::optional<CGRect> takePictureDamage(const UIView& root);

}  // namespace platform::backend
