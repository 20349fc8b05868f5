// Examines how much of a GIF can be shown. Any thread.
#pragma once

#include "platform/data.h"

namespace platform::backend::gif {

// Numbers of images.
struct Inspection {
  int all = 0;
  // Images that have rows, all of which can be decoded.
  int whole = 0;
  // Images of which only some rows can be decoded.
  int partial = 0;
  // True if the file has its trailer.
  bool hasTrailer = false;

  int shown() const { return whole + partial; }
  bool isSound() const { return whole == all && hasTrailer; }
};

// Decodes every image without drawing it. All numbers are 0 for a file that is not a GIF. Throws
// std::bad_alloc.
Inspection inspect(const NSData& data);

}  // namespace platform::backend::gif
