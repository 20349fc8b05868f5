#include "platform/linux/views/main_thread_check.h"

#include <atomic>

#include <unistd.h>

namespace platform::backend {
namespace {

std::atomic<int> times = 0;

}  // namespace

void expectMainThread() {
  if (gettid() != getpid()) ++times;
}

int timesOffMainThread() {
  return times;
}

}  // namespace platform::backend
