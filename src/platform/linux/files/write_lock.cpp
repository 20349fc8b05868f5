#include "platform/linux/files/write_lock.h"

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

#include "platform/linux/files/device_root.h"

namespace platform::backend {

WriteLock::WriteLock() {
  const FileDescriptor folder = openHostFolder();
  if (!folder) return;
  file_ = FileDescriptor(openat(folder.get(), "settings.lock",
                                O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
  constexpr std::chrono::milliseconds pause{1};
  constexpr int patience = 500;
  for (int tried = 0; file_ && tried < patience; ++tried) {
    if (flock(file_.get(), LOCK_EX | LOCK_NB) == 0) return;
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace platform::backend
