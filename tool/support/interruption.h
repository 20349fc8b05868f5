// Signals that end a command early.
#pragma once

#include <chrono>

#include "platform/linux/files/file_descriptor.h"

namespace tool {

// Takes SIGINT, SIGTERM and SIGHUP as long as it lives. Call it before any thread is started.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // Returns true if a signal has arrived since the last call that returned true.
  bool hasCome() { return comesUntil(std::chrono::steady_clock::now()); }
  // The same, but waits for a signal until then.
  bool comesUntil(std::chrono::steady_clock::time_point end);

 private:
  const platform::backend::FileDescriptor signals_;
};

}  // namespace tool
