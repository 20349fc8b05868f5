// A counting semaphore that starts at 0, and the deadline that every wait of the system has.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace lumora {

using Deadline = std::chrono::steady_clock::time_point;

// Five seconds from now, in real time.
Deadline deadlineFromNow();

// Shared by who waits and who signals, since either may outlive the other. Any thread.
class Semaphore {
 public:
  void signal();
  // False if the deadline passed first.
  bool waitUntil(Deadline deadline);

 private:
  std::mutex mutex_;
  std::condition_variable signalled_;
  int count_ = 0;
};

}  // namespace lumora
