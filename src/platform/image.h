// Decoded pictures and the platform's picture services. Pictures are immutable and may be used on
// any thread; a picture that cannot be had is nullptr.
#pragma once

#include <memory>
#include <string>

#include "platform/data.h"

namespace platform {

class UIImage {
 public:
  // Public so that the backend's files can reach it; defined, and made, by the backend only.
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

// The picture in a file, PNG or the first of a GIF; nullptr if there is none.
ImageRef imageWithContentsOfFile(const std::string& path);

// The PNG encoding; nullptr if the memory does not suffice.
DataRef UIImagePNGRepresentation(const UIImage& image);

}  // namespace platform
