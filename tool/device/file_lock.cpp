#include "tool/device/file_lock.h"

#include <cerrno>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "command_line/failure.h"
#include "platform/linux/files/device_root.h"
#include "tool/support/time_limit.h"

namespace tool {

using command_line::Failure;

FileLock::FileLock(const DeviceFolder& device, const char* name, bool isInherited) {
  // Opened for reading, so that a lock can be taken on a full or read-only disk.
  const int flags = O_RDONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | (isInherited ? 0 : O_CLOEXEC);
  file_ = platform::backend::FileDescriptor(openat(device.hostFolder(), name, flags, 0600));
  if (file_) return;
  throw Failure("cannot open " +
                (device.path() / platform::backend::hostFolderName / name).string() + ": " +
                std::strerror(errno));
}

bool FileLock::tryToTake() {
  return flock(file_.get(), LOCK_EX | LOCK_NB) == 0;
}

bool FileLock::take(std::chrono::duration<double> timeout) {
  constexpr std::chrono::milliseconds pause{50};
  const auto limit = std::chrono::steady_clock::now() + timeout;
  while (!tryToTake()) {
    if (std::chrono::steady_clock::now() >= limit) return false;
    std::this_thread::sleep_for(pause);
  }
  return true;
}

bool FileLock::isGone() const {
  struct stat status {};
  return fstat(file_.get(), &status) != 0 || status.st_nlink == 0;
}

FileLock lockOutImports(const DeviceFolder& device) {
  FileLock lock(device, FileLock::import);
  if (!lock.take(usualTimeout)) {
    throw Failure("another command is still importing a GIF; nothing was changed, try again later");
  }
  return lock;
}

}  // namespace tool
