// A lock on a file of the device's own folder: one process has it at a time, and loses it with its
// life.
#pragma once

#include <chrono>
#include <filesystem>

#include "platform/linux/device_root.h"

namespace tool {

class FileLock {
 public:
  // Makes the file where it is missing. Throws Failure if it cannot. A lock that is inherited lasts
  // until the programs that this process starts have ended, too.
  explicit FileLock(const std::filesystem::path& file, bool isInherited = false);

  // Whether this object has the lock now.
  bool tryToTake();
  // Tries until the time is up.
  bool take(std::chrono::duration<double> timeout);

  // Whether the file has been deleted: then it locks nobody out any more.
  bool isGone() const;

 private:
  platform::FileDescriptor file_;
};

}  // namespace tool
