// An image view's content on this backend. Main thread.
#pragma once

#include "platform/image_view.h"
#include "platform/linux/views/picture_surface.h"

namespace platform {

struct UIImageView::Impl {
  ImageRef image;
  // Updated only when the view is drawn.
  backend::PictureSurface surface;
  // True from a change of the image until its damage is taken.
  bool isChangeNoted = false;
};

}  // namespace platform
