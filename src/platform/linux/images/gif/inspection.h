// How much of a GIF can be shown. Any thread.
#pragma once

#include "platform/data.h"

namespace platform::backend::gif {

// Counts of images, which are the frames.
struct Inspection {
  int all = 0;
  int whole = 0;
  // Those of which some rows can be shown.
  int partial = 0;
  // Whether the file goes on to its proper end.
  bool hasTrailer = false;

  int shown() const { return whole + partial; }
  bool isSound() const { return whole == all && hasTrailer; }
};

// Decodes every image, without drawing it. Nothing is counted in a file that is not a GIF. Throws
// std::bad_alloc.
Inspection inspect(const NSData& data);

}  // namespace platform::backend::gif
