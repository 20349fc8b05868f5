// The images of an encoded file, decoded one by one. One thread at a time. Reading in order of
// index decodes each image once; going back decodes from the start again. Uses the memory of a few
// frames, however many there are.
#pragma once

#include <memory>
#include <optional>

#include "platform/image.h"

namespace platform {

// The GIF part of an image's properties, in seconds. A value that the file does not give is
// nothing.
struct GIFProperties {
  std::optional<double> unclampedDelayTime;
  std::optional<double> delayTime;
};

struct ImageProperties {
  std::optional<GIFProperties> gif;
};

class CGImageSource {
 public:
  // Returns a source that owns data, which must not be nullptr. Returns nullptr if the bytes are
  // not an image file, or if the images are too large to decode.
  static std::unique_ptr<CGImageSource> createWithData(const DataRef& data);
  ~CGImageSource();

  // Returns the number of images, which may be 0 on Linux, for a GIF without any.
  int count() const;
  // Returns the complete frame at this index, as a viewer shows it. Returns nullptr if it cannot be
  // decoded, if memory runs out, or if the index is not from 0 to count() - 1.
  ImageRef createImageAtIndex(int index);
  // Returns nothing if the index is not from 0 to count() - 1 or the properties cannot be read.
  std::optional<ImageProperties> copyPropertiesAtIndex(int index) const;

 private:
  struct Impl;
  explicit CGImageSource(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
