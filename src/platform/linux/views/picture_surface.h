// An image converted to the screen's pixel format and kept from frame to frame: only those strips
// are converted again that the next image does not share with this one. Main thread.
#pragma once

#include <array>
#include <cstdint>
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

  // Converts the image to the surface. If memory runs out, there is no surface.
  void update(const UIImage& image);
  // Returns the rows that may have changed since the last call.
  Rows takeChangedRows() { return std::exchange(changed_, {}); }

  // Returns true if the image is known to have no transparent pixels.
  bool isOpaque() const { return isOpaque_; }
  // Returns the surface, with premultiplied 32-bit pixels, or nullptr if there is none. Valid until
  // the next update.
  cairo_surface_t* surface() const { return surface_.get(); }

 private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };

  bool fits(const PictureShape& shape) const;
  void start(const PictureShape& shape, bool isOpaque);
  void setPalette(std::shared_ptr<const Palette> palette);
  void convertChangedStrips(const UIImage::Impl& picture);
  void convertStrip(const UIImage::Impl& picture, int strip);
  void noteChanged(int strip);

  std::unique_ptr<cairo_surface_t, Destroy> surface_;
  PictureShape shape_;
  std::shared_ptr<const Palette> palette_;
  // The palette's colors in the screen's pixel format.
  std::array<std::uint32_t, maxColors> colors_{};
  Strips strips_;
  Rows changed_;
  bool isOpaque_ = false;
};

}  // namespace platform::backend
