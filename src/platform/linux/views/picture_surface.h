// An image converted to the screen's pixel format and kept from frame to frame: only those strips
// are converted again that the next image does not share with this one, and the pixels that have
// changed are known. Main thread.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <cairo.h>

#include "platform/linux/images/picture/picture.h"
#include "platform/linux/views/cairo_objects.h"
#include "platform/linux/views/region.h"

namespace platform::backend {

class PictureSurface {
 public:
  // Converts the image to the surface. If memory runs out, there is no surface.
  void update(const UIImage& image);
  // Returns the pixels that may have changed since the last call.
  Region takeChanged();

  // Returns true if the image has no transparent pixels.
  bool isOpaque() const { return transparentStrips_ == 0; }
  // Returns the surface, with premultiplied 32-bit pixels, or nullptr if there is none. Its format
  // has no alpha if the image is opaque, because Cairo draws such images faster. Valid until the
  // next update.
  cairo_surface_t* surface() const { return isOpaque() ? opaque_.get() : translucent_.get(); }

 private:
  // A strip as it is on the surface, and whether all of its pixels are opaque.
  struct ShownStrip {
    std::shared_ptr<const Strip> strip;
    bool isOpaque = true;
  };

  bool fits(const PictureShape& shape) const;
  void start(const PictureShape& shape);
  void setPalette(std::shared_ptr<const Palette> palette);
  void convertChangedStrips(const UIImage::Impl& picture);
  // Returns true if all of its pixels are opaque.
  bool convertStrip(const UIImage::Impl& picture, int strip);
  // Converts a row to room_. Returns all bits that are set in all of its pixels.
  std::uint32_t convertRow(const std::uint8_t* row);
  void takeRow(int row);
  void noteChanged(const cairo_rectangle_int_t& part);

  // Both surfaces show the same pixels.
  std::unique_ptr<std::uint32_t[]> pixels_;
  CairoSurface opaque_;
  CairoSurface translucent_;
  PictureShape shape_;
  std::shared_ptr<const Palette> palette_;
  // The palette's colors in the screen's pixel format.
  std::array<std::uint32_t, maxColors> colors_{};
  std::vector<ShownStrip> strips_;
  int transparentStrips_ = 0;
  std::vector<std::uint32_t> room_;
  Region changed_;
  // What has changed but is not in changed_ yet.
  cairo_rectangle_int_t pending_{};
};

}  // namespace platform::backend
