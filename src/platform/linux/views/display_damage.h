// Which part of the screen must be drawn again because pictures have changed. Whatever else changes
// has all of it drawn: see RunLoop::setNeedsDisplay. Main thread.
#pragma once

#include <memory>
#include <optional>

#include "platform/geometry.h"
#include "platform/image_view.h"

namespace platform::backend {

// The view shows another picture of, most likely, the same size.
void notePictureChanged(const std::shared_ptr<UIImageView>& view);

// What the pictures that changed since the last call need to have drawn, in the root's points;
// nothing if none of them can be seen.
std::optional<CGRect> takePictureDamage(const UIView& root);

}  // namespace platform::backend
