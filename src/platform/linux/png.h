// PNG files, read and written.
#pragma once

#include "platform/image.h"

namespace platform {

// nullptr if the bytes are no sound PNG, or one too large to hold.
ImageRef decodePng(const Bytes& bytes);

}  // namespace platform
