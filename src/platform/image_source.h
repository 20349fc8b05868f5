// The pictures of an encoded file, decoded one by one. Used by one thread at a time; reading in
// order of index costs one decoding each, going back starts over. Memory is a few frames, whatever
// the file's length.
#pragma once

#include <memory>
#include <optional>

#include "platform/image.h"

namespace platform {

// The GIF part of a picture's properties, in seconds.
struct GIFProperties {
  std::optional<double> unclampedDelayTime;
  std::optional<double> delayTime;
};

struct ImageProperties {
  std::optional<GIFProperties> gif;
};

class CGImageSource {
 public:
  // nullptr if the bytes are not an image file, or one too large to hold.
  static std::unique_ptr<CGImageSource> createWithData(const DataRef& data);
  ~CGImageSource();

  int count() const;
  // Returns the whole picture as shown at this index; nullptr if it cannot be decoded, or if the
  // index is not from 0 to count() - 1.
  ImageRef createImageAtIndex(int index);
  // Returns nothing for such an index.
  std::optional<ImageProperties> copyPropertiesAtIndex(int index) const;

 private:
  struct Impl;
  explicit CGImageSource(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
