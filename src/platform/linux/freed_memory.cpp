#include "platform/linux/freed_memory.h"

#include <malloc.h>

namespace platform {

void keepFreedMemory() {
  // Larger than the strips and planes of a frame, smaller than a whole screen in 32 bits.
  constexpr int largestFromHeap = 8 << 20;
  constexpr int mostKept = 64 << 20;
  mallopt(M_MMAP_THRESHOLD, largestFromHeap);
  mallopt(M_TRIM_THRESHOLD, mostKept);
}

void giveFreedMemoryBack() {
  malloc_trim(0);
}

}  // namespace platform
