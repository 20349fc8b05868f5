#include "tool/host_lock.h"

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

#include "tool/failure.h"
#include "tool/host_connection.h"

namespace tool {
namespace {

platform::FileDescriptor openLockFile(const DeviceFolder& device, int flags) {
  std::error_code error;
  std::filesystem::create_directories(device.lockFile().parent_path(), error);
  return platform::FileDescriptor(open(device.lockFile().c_str(), O_RDWR | O_CREAT | flags, 0600));
}

bool tryLock(const platform::FileDescriptor& file) {
  return flock(file.get(), LOCK_EX | LOCK_NB) == 0;
}

}  // namespace

bool HostLock::isFree(const DeviceFolder& device) {
  const auto file = openLockFile(device, O_CLOEXEC);
  return !file || tryLock(file);
}

HostLock::HostLock(const DeviceFolder& device) : file_(openLockFile(device, 0)) {
  if (!file_) {
    throw Failure("cannot write in " + device.path().string() +
                  ": is it yours, and is there space?");
  }
  constexpr std::chrono::milliseconds pause{50};
  constexpr int tries = 40;
  for (int count = 0; !tryLock(file_); ++count) {
    if (HostConnection::find(device) || count == tries) {
      throw Failure("a home screen is running for " + device.path().string() +
                    " already; end it with: lumora stop");
    }
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace tool
