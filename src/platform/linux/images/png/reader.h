// Reads PNG files. Any thread.
#pragma once

#include "platform/image.h"

namespace platform::backend::png {

// Returns the image, or nullptr if the bytes are not a valid PNG, if it is too large, or if memory
// runs out. Strips that are equal to those of a recently decoded image, which is still in use, are
// shared with it.
ImageRef decodePng(const NSData& data);

}  // namespace platform::backend::png
