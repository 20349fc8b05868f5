// A counting semaphore that starts at 0. Any thread. Waiters and signalers should share ownership,
// since either may outlive the other.
#pragma once

#include <chrono>
#include <memory>

namespace platform {

class DispatchSemaphore {
 public:
  DispatchSemaphore();
  ~DispatchSemaphore();
  DispatchSemaphore(const DispatchSemaphore&) = delete;
  DispatchSemaphore& operator=(const DispatchSemaphore&) = delete;

  // Lets one wait return, a present or a future one. Never fails.
  void signal();
  // Waits for a signal for at most limit, measured by a clock that is never set; 0 or less does not
  // wait. Returns false if the time passed without a signal.
  bool wait(std::chrono::nanoseconds limit);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
