// A counting semaphore that starts at 0. Any thread. Shared by who waits and who signals, since
// either may outlive the other.
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

  void signal();
  // Until it is signalled, at most so long, on a clock that is never set; false if the time was
  // over first.
  bool wait(std::chrono::nanoseconds limit);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
