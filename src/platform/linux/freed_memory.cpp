#include "platform/linux/freed_memory.h"

#include <atomic>

#include <malloc.h>

namespace platform::backend {
namespace {

std::atomic<bool> isKept = false;

}  // namespace

void keepFreedMemory() {
  // Larger than the strips and planes of a frame, smaller than a screenful of 32-bit pixels.
  constexpr int maxHeapAllocation = 8 << 20;
  constexpr int maxKept = 64 << 20;
  // One heap for all threads: frames are freed by other threads than those that made them.
  mallopt(M_ARENA_MAX, 1);
  // Another allocator in place of the C library's, such as a sanitizer's, refuses both.
  isKept =
      mallopt(M_MMAP_THRESHOLD, maxHeapAllocation) == 1 && mallopt(M_TRIM_THRESHOLD, maxKept) == 1;
}

// If another allocator is in use, malloc_trim would set up the C library's, and two threads doing
// so at the same time would find it half initialized.
void giveFreedMemoryBack() {
  if (isKept) malloc_trim(0);
}

}  // namespace platform::backend
