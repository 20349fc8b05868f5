#include "platform/image.h"

#include <utility>

#include "platform/linux/images/picture/picture.h"

namespace platform {

const std::uint8_t* UIImage::Impl::row(int y) const {
  const int rows = shape.rowsPerStrip();
  return strips[static_cast<std::size_t>(y / rows)]->row(y % rows);
}

UIImage::UIImage(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}
UIImage::~UIImage() = default;

int UIImage::width() const {
  return impl_->shape.width;
}

int UIImage::height() const {
  return impl_->shape.height;
}

}  // namespace platform
