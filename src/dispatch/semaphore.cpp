#include "dispatch/semaphore.h"

namespace lumora {

Deadline deadlineFromNow() {
  constexpr std::chrono::seconds waitLimit{5};
  return std::chrono::steady_clock::now() + waitLimit;
}

void Semaphore::signal() {
  // Notified under the lock: the waiter may let go of the semaphore as soon as it is free.
  std::lock_guard lock(mutex_);
  ++count_;
  signalled_.notify_one();
}

bool Semaphore::waitUntil(Deadline deadline) {
  std::unique_lock lock(mutex_);
  if (!signalled_.wait_until(lock, deadline, [this] { return count_ > 0; })) return false;
  --count_;
  return true;
}

}  // namespace lumora
