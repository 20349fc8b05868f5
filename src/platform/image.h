// Decoded pictures and the platform's picture services. Pictures are immutable and may be used on
// any thread; a picture that cannot be had is nullptr.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace platform {

using Bytes = std::vector<std::uint8_t>;

// Straight (not premultiplied) RGBA, 8 bits each, row by row from the top, without padding.
struct UIImage {
  int width = 0;
  int height = 0;
  Bytes pixels;
};
using ImageRef = std::shared_ptr<const UIImage>;

// The picture in a file, PNG or the first of a GIF; nullptr if there is none.
ImageRef imageWithContentsOfFile(const std::string& path);

// The PNG encoding; empty if the picture is empty or the memory does not suffice.
Bytes UIImagePNGRepresentation(const UIImage& image);

}  // namespace platform
