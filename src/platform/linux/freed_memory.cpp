#include "platform/linux/freed_memory.h"

#include <atomic>

#include <malloc.h>

namespace platform::backend {
namespace {

std::atomic<bool> isKept = false;

}  // namespace

void keepFreedMemory() {
  // Larger than the strips and planes of a frame, smaller than a whole screen in 32 bits.
  constexpr int maxHeapAllocation = 8 << 20;
  constexpr int maxKept = 64 << 20;
  // An allocator that stands in for the C library's, as a sanitizer's does, refuses both.
  isKept =
      mallopt(M_MMAP_THRESHOLD, maxHeapAllocation) == 1 && mallopt(M_TRIM_THRESHOLD, maxKept) == 1;
}

// Not where the C library's own allocator is not the one in use: the call would set that up, and
// two threads at once would find it half done.
void giveFreedMemoryBack() {
  if (isKept) malloc_trim(0);
}

}  // namespace platform::backend
