#include "platform/linux/images/gif/compositor.h"

#include <new>

namespace platform::backend::gif {
ImageRef Compositor::picture(int index) {
  if (index < seen_ - 1) restart();
  try {
    while (seen_ <= index) {
      isDrawn_ = false;
      isDrawn_ = draw(file_.images[static_cast<std::size_t>(seen_++)]);
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
  seen_ = 0;
  drawn_ = nullptr;
}

bool Compositor::draw(const SubImage& image) {
  const int rows = decodeImage(data_, image, indices_);
  if (rows == 0) return false;
  if (!canvas_) canvas_.emplace(file_.width, file_.height);
  if (drawn_ != nullptr) dispose(*drawn_);
  if (image.disposal == Disposal::RestorePrevious) previous_ = canvas_->save();
  const std::size_t decoded = static_cast<std::size_t>(rows) * image.width;
  canvas_->draw(image, colorsOf(image), indices_.indices().first(decoded));
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
