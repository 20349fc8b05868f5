#include "platform/linux/files/file_identity.h"

#include <ctime>

#include <sys/stat.h>

namespace platform::backend {
namespace {

std::int64_t nanoseconds(const timespec& time) {
  constexpr std::int64_t perSecond = 1'000'000'000;
  return time.tv_sec * perSecond + time.tv_nsec;
}

}  // namespace

std::optional<FileIdentity> identityOf(const FileDescriptor& file) {
  // Longer than the steps of a file system's times, which are at most two seconds (FAT).
  constexpr std::int64_t moment = 2'500'000'000;
  struct stat status {};
  timespec now{};
  if (fstat(file.get(), &status) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) {
    return std::nullopt;
  }
  const FileIdentity identity{status.st_dev, status.st_ino, status.st_size,
                              nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
  const std::int64_t age = nanoseconds(now) - identity.changed;
  return age < moment ? std::nullopt : std::optional(identity);
}

}  // namespace platform::backend
