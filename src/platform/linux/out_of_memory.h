// What is too large for the memory counts as not to be had; it must not end the process. Any
// thread.
#pragma once

#include <new>

namespace platform::backend {

// For programs, which must not take a lack of memory for damage: how often there was any so far.
void noteOutOfMemory();
int timesOutOfMemory();

// The work's result, or an empty one if the memory does not suffice for it.
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
