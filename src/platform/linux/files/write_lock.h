// Serialises the writers of the device's settings, in all processes of the device. Any thread.
#pragma once

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// Held while the object lives. A writer waits for others only a moment and then goes on without the
// lock, so that nobody who keeps it can stop the device; nor is there one where the host has no
// folder.
class WriteLock {
 public:
  WriteLock();

 private:
  FileDescriptor file_;
};

}  // namespace platform::backend
