#include "tool/support/disk_use.h"

#include <set>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace tool {

std::uint64_t diskUse(const std::filesystem::path& folder) {
  // The unit of st_blocks (stat(3type)).
  constexpr std::uint64_t blockSize = 512;
  std::set<std::pair<dev_t, ino_t>> counted;
  std::uint64_t bytes = 0;
  std::error_code error;
  const auto add = [&](const std::filesystem::path& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return;
    if (!counted.emplace(status.st_dev, status.st_ino).second) return;
    bytes += static_cast<std::uint64_t>(status.st_blocks) * blockSize;
  };
  add(folder);
  for (std::filesystem::recursive_directory_iterator at(
           folder, std::filesystem::directory_options::skip_permission_denied, error);
       !error && at != std::filesystem::recursive_directory_iterator(); at.increment(error)) {
    add(at->path());
  }
  return bytes;
}

}  // namespace tool
