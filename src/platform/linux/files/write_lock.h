// Serializes the writers of the device's settings, in all processes of the device. Any thread.
#pragma once

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// Holds the lock until it is destroyed. If the lock is not free within about half a second, the
// writer continues without it, so that a process that keeps it cannot block all others. Without a
// host folder there is no lock.
class WriteLock {
 public:
  WriteLock();

 private:
  FileDescriptor file_;
};

}  // namespace platform::backend
