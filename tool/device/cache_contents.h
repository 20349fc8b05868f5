// Counts what a frame cache contains. The home screen does not report if it could store all of it.
#pragma once

#include "gifview/frame_cache.h"

namespace tool {

struct CacheContents {
  // The length of the list of delays, which has one for each frame; -1 if there is no list.
  int listed = -1;
  // The number of frames with a complete file.
  int written = 0;

  bool isComplete() const { return written == listed; }
};

// Counts the contents of the cache, whichever GIF it was made from. Device paths must have a root.
CacheContents contentsOf(const lumora::FrameCacheLayout& cache);

}  // namespace tool
