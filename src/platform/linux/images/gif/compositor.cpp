#include "platform/linux/images/gif/compositor.h"

#include <new>

namespace platform::backend::gif {
ImageRef Compositor::picture(int index, bool isInOrder) {
  if (index < seen_ - 1) restart();
  try {
    while (seen_ <= index) {
      isDrawn_ = false;
      const SubImage& image = file_.images[static_cast<std::size_t>(seen_)];
      isDrawn_ = draw(image, images_.indicesOf(seen_++, isInOrder));
    }
    return isDrawn_ ? canvas_->picture() : nullptr;
  } catch (const std::bad_alloc&) {
    // The canvas may be half drawn.
    restart();
    throw;
  }
}

void Compositor::restart() {
  canvas_.reset();
  previous_.reset();
  images_.clear();
  seen_ = 0;
  drawn_ = nullptr;
}

bool Compositor::draw(const SubImage& image, std::span<const std::uint8_t> indices) {
  if (indices.empty()) return false;
  if (!canvas_) canvas_.emplace(file_.width, file_.height);
  if (drawn_ != nullptr) dispose(*drawn_);
  if (image.disposal == Disposal::RestorePrevious) previous_ = canvas_->save();
  canvas_->draw(image, colorsOf(image), indices);
  drawn_ = &image;
  return true;
}

void Compositor::dispose(const SubImage& image) {
  if (image.disposal == Disposal::RestorePrevious) canvas_->restore(*previous_);
  if (image.disposal == Disposal::Clear) canvas_->clear(image);
}

const ColorTable& Compositor::colorsOf(const SubImage& image) {
  if (!(image.colors == colorsLocation_)) {
    colors_ = readColorTable(data_, image.colors);
    colorsLocation_ = image.colors;
  }
  return colors_;
}

}  // namespace platform::backend::gif
