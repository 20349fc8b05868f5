// A lock of a device, held by one process at a time and released when it exits.
#pragma once

#include <chrono>

#include "platform/linux/files/file_descriptor.h"
#include "tool/device/device_folder.h"

namespace tool {

class FileLock {
 public:
  // Held while the device's home screen runs.
  static constexpr auto host = "lock";
  // Held from the start of an import until its frames are made.
  static constexpr auto import = "import.lock";
  // Held while frames are being blurred.
  static constexpr auto blur = "blur.lock";

  // Opens the file of this name in the device's host folder, or makes it; does not take the lock.
  // If isInherited, programs that this process starts keep the lock until they end, too. Throws
  // Failure if the file cannot be opened.
  FileLock(const DeviceFolder& device, const char* name, bool isInherited = false);

  // Waits for the lock until the timeout. Returns true if this object holds it.
  bool take(std::chrono::duration<double> timeout);

  // Returns true if the file has been deleted; then other processes can take a lock of this name.
  bool isGone() const;

 private:
  // Takes the lock if it is free. Returns true if this object holds it.
  bool tryToTake();

  platform::backend::FileDescriptor file_;
};

// Returns the import lock, held, for a command that must not change settings during an import.
// Waits for a running import; throws Failure if that takes longer than usualTimeout.
FileLock lockOutImports(const DeviceFolder& device);

}  // namespace tool
