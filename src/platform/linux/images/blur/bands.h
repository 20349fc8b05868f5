// Processes the rows of an image on several threads.
#pragma once

#include <functional>

namespace platform::backend::blur {

// Rows [first, end).
struct Band {
  int first;
  int end;
};

// Calls work for all rows at once or, if there are many, for one part on this thread and for others
// on helper threads. Returns when all work is done. Rethrows what work throws.
void inBands(Band rows, const std::function<void(Band)>& work);

}  // namespace platform::backend::blur
