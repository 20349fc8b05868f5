// The pictures that a GIF shows, one after the other: each image drawn over what its predecessors
// left, by the rules of disposal. The canvas starts transparent; images are clipped to it.
#pragma once

#include "platform/image.h"
#include "platform/linux/gif_file.h"

namespace platform::gif {

class Compositor {
 public:
  // The file's bytes must outlive this object.
  explicit Compositor(const File& file) : file_(file) {}

  // The canvas just after image index was drawn. nullptr if that image is damaged, or an earlier
  // one was: what builds on a damaged picture is none.
  ImageRef picture(int index);

 private:
  void restart();
  bool drawNext();
  void dispose(const Image& image);
  void draw(const Image& image, const Bytes& indices);

  const File& file_;
  Bytes canvas_;
  Bytes previousCanvas_;
  int drawn_ = 0;
  bool damaged_ = false;
};

}  // namespace platform::gif
