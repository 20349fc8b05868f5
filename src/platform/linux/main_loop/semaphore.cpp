#include "platform/semaphore.h"

#include <condition_variable>
#include <mutex>

namespace platform {

struct DispatchSemaphore::Impl {
  std::mutex mutex;
  std::condition_variable signalled;
  int count = 0;
};

DispatchSemaphore::DispatchSemaphore() : impl_(std::make_unique<Impl>()) {}
DispatchSemaphore::~DispatchSemaphore() = default;

void DispatchSemaphore::signal() {
  // Notifies under the lock, because the waiter may destroy the semaphore once it is unlocked.
  std::lock_guard lock(impl_->mutex);
  ++impl_->count;
  impl_->signalled.notify_one();
}

bool DispatchSemaphore::wait(std::chrono::nanoseconds limit) {
  std::unique_lock lock(impl_->mutex);
  if (!impl_->signalled.wait_for(lock, limit, [this] { return impl_->count > 0; })) return false;
  --impl_->count;
  return true;
}

}  // namespace platform
