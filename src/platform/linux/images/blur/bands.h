// Processes the rows of an image on two threads.
#pragma once

#include <functional>

namespace platform::backend::blur {

// Rows [first, end).
struct Band {
  int first;
  int end;
};

// Calls work for all rows at once or, if there are many, for one half on this thread and for the
// other on a second one. Returns when all work is done. Rethrows what work throws.
void inBands(Band rows, const std::function<void(Band)>& work);

}  // namespace platform::backend::blur
