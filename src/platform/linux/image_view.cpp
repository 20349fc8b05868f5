#include "platform/image_view.h"

#include <utility>

#include "platform/linux/run_loop.h"

namespace platform {

UIImageView::UIImageView() = default;
UIImageView::~UIImageView() = default;

void UIImageView::setImage(ImageRef image) {
  image_ = std::move(image);
  RunLoop::main().setNeedsDisplay();
}

ImageRef UIImageView::image() const {
  return image_;
}

}  // namespace platform
