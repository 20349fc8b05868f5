// PNG files, read and written.
#pragma once

#include "platform/image.h"

namespace platform::backend::png {

// nullptr if the bytes are no sound PNG, or one too large to hold. What decoded pictures that are
// still in use have in common with this one is shared with them.
ImageRef decodePng(const NSData& data);

}  // namespace platform::backend::png
