// A picture as the screen wants it, kept from frame to frame: of the next picture only the strips
// that it does not share with this one are looked up again. Main thread.
#pragma once

#include <memory>

#include <cairo.h>

#include "platform/linux/picture.h"

namespace platform {

class PictureSurface {
 public:
  // Rows [first, end).
  struct Rows {
    int first = 0;
    int end = 0;
  };

  // Shows the picture from now on. Gives the rows that may look different; all of them if the
  // memory does not suffice, and there is no surface then.
  Rows update(const UIImage& image);

  // Premultiplied, 32 bits; nullptr before the first picture.
  cairo_surface_t* surface() const { return surface_.get(); }
  // The same in bytes, without padding.
  Bytes pixels() const;

 private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };

  bool fits(const PictureShape& shape) const;
  void lookUp(const UIImage::Impl& picture, int strip);

  std::unique_ptr<cairo_surface_t, Destroy> surface_;
  PictureShape shape_;
  std::shared_ptr<const Palette> palette_;
  // Of the palette, as the screen wants them.
  std::array<std::uint32_t, mostColors> colors_{};
  Strips strips_;
};

}  // namespace platform
