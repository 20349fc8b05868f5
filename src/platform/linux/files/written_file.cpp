#include "platform/linux/files/written_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/files/file_contents.h"

namespace platform::backend {

bool WrittenFile::make(int directory, const std::string& name,
                       const std::function<bool(const FileDescriptor& file)>& write) {
  if (link(directory, name)) return true;
  file_ = createFile(directory, name);
  if (!file_ || !write(file_)) return false;
  writtenTime_ = modificationTime();
  return true;
}

bool WrittenFile::link(int directory, const std::string& name) const {
  const auto now = modificationTime();
  if (!now || now != writtenTime_) return false;
  const std::string file = "/proc/self/fd/" + std::to_string(file_.get());
  return linkat(AT_FDCWD, file.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// Returns nothing if there is no file or its size has changed.
std::optional<WrittenFile::Moment> WrittenFile::modificationTime() const {
  struct stat status {};
  if (!file_ || fstat(file_.get(), &status) != 0) return std::nullopt;
  if (static_cast<std::size_t>(status.st_size) != size_) return std::nullopt;
  return Moment{status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace platform::backend
