// Work on the rows of a picture, on two threads.
#pragma once

#include <functional>

namespace platform::backend::blur {

// Rows [first, end).
struct Band {
  int first;
  int end;
};

// Calls work once for all of the rows or, if they are many, for each half on a thread of its own,
// and returns when all is done.
void inBands(Band rows, const std::function<void(Band)>& work);

}  // namespace platform::backend::blur
