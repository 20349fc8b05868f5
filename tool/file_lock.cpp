#include "tool/file_lock.h"

#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "tool/failure.h"

namespace tool {

FileLock::FileLock(const std::filesystem::path& file, bool isInherited) {
  std::error_code error;
  std::filesystem::create_directories(file.parent_path(), error);
  // Not for writing, so that a lock can be taken where nothing can be written any more.
  const int flags = O_RDONLY | O_CREAT | (isInherited ? 0 : O_CLOEXEC);
  file_ = platform::FileDescriptor(open(file.c_str(), flags, 0600));
  if (!file_) {
    throw Failure("cannot write " + file.string() + ": is the folder yours, and is there space?");
  }
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

}  // namespace tool
