#include "platform/semaphore.h"

#include <algorithm>

#import <dispatch/dispatch.h>

namespace platform {

struct DispatchSemaphore::Impl {
  const dispatch_semaphore_t native = dispatch_semaphore_create(0);
  ~Impl() { dispatch_release(native); }
};

DispatchSemaphore::DispatchSemaphore() : impl_(std::make_unique<Impl>()) {}
DispatchSemaphore::~DispatchSemaphore() = default;

void DispatchSemaphore::signal() {
  dispatch_semaphore_signal(impl_->native);
}

bool DispatchSemaphore::wait(std::chrono::nanoseconds limit) {
  const std::chrono::nanoseconds::rep left =
      std::max<std::chrono::nanoseconds::rep>(limit.count(), 0);
  return dispatch_semaphore_wait(impl_->native, dispatch_time(DISPATCH_TIME_NOW, left)) == 0;
}

}  // namespace platform
