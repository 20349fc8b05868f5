#include "platform/linux/out_of_memory.h"

#include <atomic>

namespace platform::backend {
namespace {

std::atomic<int> times = 0;

}  // namespace

void noteOutOfMemory() {
  ++times;
}

int timesOutOfMemory() {
  return times;
}

}  // namespace platform::backend
