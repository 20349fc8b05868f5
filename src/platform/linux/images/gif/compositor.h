// Produces the frames of a GIF. Each image is drawn over what the images before it have left on the
// canvas, following their disposal methods. The canvas is transparent at first; images are clipped
// to it. One thread at a time.
#pragma once

#include <optional>

#include "platform/linux/images/gif/canvas.h"
#include "platform/linux/images/gif/decoded_images.h"
#include "platform/linux/images/gif/file.h"

namespace platform::backend::gif {

class Compositor {
 public:
  // Both must outlive this object.
  Compositor(const NSData::Impl& data, const File& file)
      : data_(data), file_(file), images_(data, file) {}

  // Returns the canvas after the image with this index was drawn. If the image's data are
  // incomplete or damaged, only the rows before that are drawn; if there is no complete row,
  // returns nullptr, and other frames are drawn as if the image did not exist. Requires an index
  // within file.images. If isInOrder, the following ones are expected to be asked for next. Throws
  // std::bad_alloc, after which the next call starts again with the first image.
  ImageRef picture(int index, bool isInOrder);

 private:
  void restart();
  // Draws an image. Returns false, with the canvas unchanged, if it has no rows.
  bool draw(const SubImage& image, std::span<const std::uint8_t> indices);
  void dispose(const SubImage& image);
  const ColorTable& colorsOf(const SubImage& image);

  const NSData::Impl& data_;
  const File& file_;
  // Created when the first image is drawn.
  std::optional<Canvas> canvas_;
  DecodedImages images_;
  std::optional<Canvas::Contents> previous_;
  // The number of images that have been decoded; isDrawn_ is true if the last of them was drawn.
  int seen_ = 0;
  bool isDrawn_ = false;
  // The last image that was drawn, whose disposal method has not been applied yet.
  const SubImage* drawn_ = nullptr;
  // The color table that was read last.
  ColorTableLocation colorsLocation_;
  ColorTable colors_;
};

}  // namespace platform::backend::gif
