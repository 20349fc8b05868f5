// A picture of the screen as the home screen gives it.
#pragma once

#include "platform/linux/files/file_descriptor.h"

namespace tool {

struct ScreenPixels {
  // Rows from the top without padding. Each pixel is a 32-bit number: from its lowest byte on blue,
  // green, red, and one without meaning.
  platform::backend::FileDescriptor file;
  int width = 0;
  int height = 0;
};

}  // namespace tool
