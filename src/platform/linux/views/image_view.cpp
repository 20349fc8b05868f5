#include "platform/image_view.h"

#include <utility>

#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/display_damage.h"
#include "platform/linux/views/image_view.h"
#include "platform/linux/views/main_thread_check.h"

namespace platform {
using namespace backend;

UIImageView::UIImageView() : impl_(std::make_unique<Impl>()) {}
UIImageView::~UIImageView() = default;

void UIImageView::setImage(ImageRef image) {
  expectMainThread();
  if (image == impl_->image) return;
  const bool replacesPicture = image && impl_->image;
  impl_->image = std::move(image);
  if (replacesPicture) {
    notePictureChanged(std::static_pointer_cast<UIImageView>(shared_from_this()));
  } else {
    RunLoop::main().setNeedsDisplay();
  }
}

ImageRef UIImageView::image() const {
  return impl_->image;
}

}  // namespace platform
