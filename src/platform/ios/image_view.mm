#include "platform/image_view.h"

#import "platform/ios/native_image.h"
#import "platform/ios/native_view.h"

namespace platform {

struct UIImageView::Impl {
  ImageRef image;
};

UIImageView::UIImageView()
    : UIView(std::make_unique<UIView::Impl>(
          UIView::Impl{Retained<::UIView>::adopt([[::UIImageView alloc] init]), nullptr})),
      impl_(std::make_unique<Impl>()) {}
UIImageView::~UIImageView() = default;

void UIImageView::setImage(ImageRef image) {
  [(::UIImageView*)nativeView(*this) setImage:image ? image->impl().native.get() : nullptr];
  impl_->image = std::move(image);
}

ImageRef UIImageView::image() const {
  return impl_->image;
}

}  // namespace platform
