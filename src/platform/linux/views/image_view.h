// An image view's content on this backend, and the views whose content has changed. Main thread.
#pragma once

#include <memory>
#include <vector>

#include "platform/image_view.h"
#include "platform/linux/views/picture_drawing.h"
#include "platform/linux/views/picture_surface.h"

namespace platform {

struct UIImageView::Impl {
  ImageRef image;
  // Of the image when the view was drawn last, or examined by damageOf.
  backend::PictureSurface surface;
  backend::PictureDrawing drawing;
  // True while takeViewsWithNewPicture is to return the view.
  bool hasNewPicture = false;
};

}  // namespace platform

namespace platform::backend {

// Returns the views whose image has been replaced by another one since the last call, without those
// that have been destroyed.
std::vector<std::shared_ptr<UIImageView>> takeViewsWithNewPicture();

}  // namespace platform::backend
