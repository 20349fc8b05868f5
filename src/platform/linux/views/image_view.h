// What an image view shows, as the renderer needs it. Main thread.
#pragma once

#include "platform/image_view.h"
#include "platform/linux/views/picture_surface.h"

namespace platform {

struct UIImageView::Impl {
  ImageRef image;
  // Brought up to date when it is to be drawn.
  backend::PictureSurface surface;
  // True from a change of the picture until its damage is taken.
  bool isChangeNoted = false;
};

}  // namespace platform
