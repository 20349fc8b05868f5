// Decoded images. They are immutable; several threads may use one at the same time. Any thread.
#pragma once

#include <memory>
#include <string>

#include "platform/data.h"

namespace platform {

class UIImage {
 public:
  // Public only so that all files of the backend can use it. Only the backend defines and creates
  // it.
  struct Impl;
  explicit UIImage(std::unique_ptr<const Impl> impl);
  ~UIImage();

  // In pixels.
  int width() const;
  int height() const;

  const Impl& impl() const { return *impl_; }

 private:
  std::unique_ptr<const Impl> impl_;
};
using ImageRef = std::shared_ptr<const UIImage>;

// Returns the image in a PNG file, or the first one in a GIF. Returns nullptr if the file cannot be
// read, contains no such image, or is too large to decode.
ImageRef imageWithContentsOfFile(const std::string& path);

// Returns the image encoded as a PNG file, or nullptr if memory runs out.
DataRef UIImagePNGRepresentation(const UIImage& image);

}  // namespace platform
