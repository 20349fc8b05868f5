#include "platform/linux/images/blur/plane.h"

namespace platform::backend::blur {

Plane::Plane(int width, int height)
    : width_(width),
      height_(height),
      stride_(wholeBlocks(static_cast<std::size_t>(width + 2 * margin) * channels)),
      values_(stride_ * static_cast<std::size_t>(height + 2 * margin)),
      zeros_(stride_) {}

const Value* Plane::row(int y) const {
  return y < -margin || y >= height_ + margin ? zeros_.data() : &values_[start(y)];
}

Value* Plane::row(int y) {
  return &values_[start(y)];
}

}  // namespace platform::backend::blur
