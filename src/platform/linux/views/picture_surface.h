// A picture as the screen wants it, kept from frame to frame: of the next picture only the strips
// that it does not share with this one are looked up again. Main thread.
#pragma once

#include <memory>
#include <utility>

#include <cairo.h>

#include "platform/linux/images/picture/picture.h"

namespace platform::backend {

class PictureSurface {
 public:
  // Rows [first, end).
  struct Rows {
    int first = 0;
    int end = 0;
  };

  // Shows the picture from now on. There is no surface if the memory does not suffice.
  void update(const UIImage& image);
  // The rows that may look different since the last call.
  Rows takeChangedRows() { return std::exchange(changed_, {}); }

  // Whether nothing shines through the picture.
  bool isOpaque() const { return isOpaque_; }
  // Premultiplied, 32 bits; nullptr before the first picture.
  cairo_surface_t* surface() const { return surface_.get(); }
  // The same in bytes, without padding.
  Bytes pixels() const;

 private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };

  bool fits(const PictureShape& shape) const;
  void start(const PictureShape& shape, bool isOpaque);
  void convertStrip(const UIImage::Impl& picture, int strip);

  std::unique_ptr<cairo_surface_t, Destroy> surface_;
  PictureShape shape_;
  std::shared_ptr<const Palette> palette_;
  // Of the palette, as the screen wants them.
  std::array<std::uint32_t, maxColors> colors_{};
  Strips strips_;
  Rows changed_;
  bool isOpaque_ = false;
};

}  // namespace platform::backend
