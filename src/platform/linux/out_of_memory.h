// What is too large for the memory counts as not to be had; it must not end the process.
#pragma once

#include <new>

namespace platform {

// The work's result, or an empty one if the memory does not suffice for it.
template <typename Work>
auto unlessOutOfMemory(Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return {};
  }
}

}  // namespace platform
