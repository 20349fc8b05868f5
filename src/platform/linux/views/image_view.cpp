#include "platform/image_view.h"

#include <utility>

#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/image_view.h"
#include "platform/linux/views/main_thread_check.h"

namespace platform {
using namespace backend;

namespace {

std::vector<std::weak_ptr<UIImageView>>& changedViews() {
  static auto* views = new std::vector<std::weak_ptr<UIImageView>>;
  return *views;
}

}  // namespace

UIImageView::UIImageView() : impl_(std::make_unique<Impl>()) {}
UIImageView::~UIImageView() = default;

void UIImageView::setImage(ImageRef image) {
  expectMainThread();
  if (image == impl_->image) return;
  const bool replacesPicture = image && impl_->image;
  impl_->image = std::move(image);
  if (replacesPicture) {
    if (!std::exchange(impl_->hasNewPicture, true)) {
      changedViews().push_back(std::static_pointer_cast<UIImageView>(shared_from_this()));
    }
    RunLoop::main().setNeedsPartialDisplay();
  } else {
    RunLoop::main().setNeedsDisplay();
  }
}

ImageRef UIImageView::image() const {
  return impl_->image;
}

std::vector<std::shared_ptr<UIImageView>> backend::takeViewsWithNewPicture() {
  std::vector<std::shared_ptr<UIImageView>> views;
  for (const auto& entry : std::exchange(changedViews(), {})) {
    auto view = entry.lock();
    if (!view) continue;
    view->impl().hasNewPicture = false;
    views.push_back(std::move(view));
  }
  return views;
}

}  // namespace platform
