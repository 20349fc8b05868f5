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

  // The canvas just after image index was drawn. nullptr if that image is damaged; the others are
  // drawn as if it were not there.
  ImageRef picture(int index);

 private:
  void restart();
  // Whether the image is sound; one that is not leaves the canvas as it was.
  bool draw(const Image& image);
  void dispose(const Image& image);
  void drawPixels(const Image& image, const Bytes& indices);

  const File& file_;
  Bytes canvas_;
  Bytes previousCanvas_;
  // How many images have been looked at, and whether the last of them is sound.
  int seen_ = 0;
  bool isSound_ = false;
  // The last one that was drawn, which is still to be disposed of.
  const Image* drawn_ = nullptr;
};

}  // namespace platform::gif
