// Finds the part of the screen that must be drawn again because images have changed. All other
// changes redraw the whole screen, through RunLoop::setNeedsDisplay. Main thread.
#pragma once

#include <memory>
#include <vector>

#include "platform/image_view.h"
#include "platform/linux/views/region.h"

namespace platform::backend {

using ImageViews = std::vector<std::shared_ptr<UIImageView>>;

// Returns the visible views of the tree whose images have been replaced by others since the last
// call.
ImageViews takeChangedViews(const UIView& root);

// Returns the pixels of the screen in which these visible views may look different since they were
// drawn last. Decodes their images. scale: pixels per point.
Region damageOf(const ImageViews& views, const UIView& root, CGFloat scale);

}  // namespace platform::backend
