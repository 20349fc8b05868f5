// The pictures that a GIF shows, one after the other: each image drawn over what its predecessors
// left, by the rules of disposal. The canvas starts transparent; images are clipped to it.
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

  // The canvas just after image index was drawn: of an image whose data end early or go wrong, the
  // rows before that. nullptr if it has no whole row; the other images are drawn as if it were not
  // there. Throws std::bad_alloc, and then starts over next time.
  ImageRef picture(int index);

 private:
  void restart();
  // Whether there is anything of the image to show; otherwise the canvas stays as it was.
  bool draw(const SubImage& image);
  void dispose(const SubImage& image);
  const ColorTable& colorsOf(const SubImage& image);

  const NSData::Impl& data_;
  const File& file_;
  // Both are made when the first image is decoded.
  std::optional<Canvas> canvas_;
  IndexBuffer indices_;
  std::optional<Canvas::Contents> previous_;
  // How many images have been looked at, and whether the last of them was drawn.
  int seen_ = 0;
  bool isDrawn_ = false;
  // The last one that was drawn, which is still to be disposed of.
  const SubImage* drawn_ = nullptr;
  // The table read last.
  ColorTableLocation colorsLocation_;
  ColorTable colors_;
};

}  // namespace platform::backend::gif
