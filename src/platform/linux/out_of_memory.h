// Turns a lack of memory into an empty result, because it must not end the process. Any thread.
#pragma once

#include <new>

namespace platform::backend {

// Counts how often memory has run out, so that programs can tell this from damaged files.
void noteOutOfMemory();
int timesOutOfMemory();

// Returns the result of work(), or an empty one if it throws std::bad_alloc. Other exceptions pass
// through.
template <typename Work>
auto unlessOutOfMemory(Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    noteOutOfMemory();
    return {};
  }
}

}  // namespace platform::backend
