// A lock of a device, held by one process at a time and released when it exits.
#pragma once

#include <chrono>

#include "platform/linux/files/file_descriptor.h"
#include "tool/device/device_folder.h"

namespace tool {

class FileLock {
 public:
  // Held by whoever runs the device's home screen, by whoever hands a GIF to it until its frames
  // are made, and by whoever has frames blurred.
  static constexpr auto host = "lock";
  static constexpr auto import = "import.lock";
  static constexpr auto blur = "blur.lock";

  // Makes the file where it is missing. Throws Failure if it cannot. A lock that is inherited lasts
  // until the programs that this process starts have ended, too.
  FileLock(const DeviceFolder& device, const char* name, bool isInherited = false);

  // Whether this object has the lock now.
  bool tryToTake();
  // Tries until the time is up. Returns whether it has the lock.
  bool take(std::chrono::duration<double> timeout);

  // Whether the file has been deleted: then it locks nobody out any more.
  bool isGone() const;

 private:
  platform::backend::FileDescriptor file_;
};

// For a command that would change what an import relies on. Waits for a running import, and throws
// Failure if that takes longer than usualTimeout.
FileLock lockOutImports(const DeviceFolder& device);

}  // namespace tool
