// Produces the frames of a GIF. Each image is drawn over what the images before it have left on the
// canvas, following their disposal methods. The canvas is transparent at first; images are clipped
// to it. One thread at a time.
#pragma once

#include <optional>

#include "platform/linux/images/gif/canvas.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/lzw.h"

namespace platform::backend::gif {

class Compositor {
 public:
  // Both must outlive this object.
  Compositor(const NSData::Impl& data, const File& file) : data_(data), file_(file) {}

  // Returns the canvas after the image with this index was drawn. If the image's data are
  // incomplete or damaged, only the rows before that are drawn; if there is no complete row,
  // returns nullptr, and other frames are drawn as if the image did not exist. Requires an index
  // within file.images. Throws std::bad_alloc, after which the next call starts again with the
  // first image.
  ImageRef picture(int index);

 private:
  void restart();
  // Draws an image. Returns false, with the canvas unchanged, if the image has no complete row.
  bool draw(const SubImage& image);
  void dispose(const SubImage& image);
  const ColorTable& colorsOf(const SubImage& image);

  const NSData::Impl& data_;
  const File& file_;
  // Created when the first image is drawn.
  std::optional<Canvas> canvas_;
  IndexBuffer indices_;
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
