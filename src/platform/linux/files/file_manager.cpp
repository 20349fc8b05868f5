#include "platform/file_manager.h"

#include <cerrno>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/data.h"
#include "platform/linux/files/device_root.h"

namespace platform {
using namespace backend;

namespace {

bool statusOf(const ItemPlace& item, struct stat& status) {
  return fstatat(item.directory.get(), item.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

// Returns false for a link, too.
bool itemExists(const std::string& path, struct stat& status) {
  auto item = findItem(path);
  return item && statusOf(*item, status) && !S_ISLNK(status.st_mode);
}

bool removeTree(int parent, const std::string& name);

bool removeContents(FileDescriptor directory) {
  DIR* stream = fdopendir(fcntl(directory.get(), F_DUPFD_CLOEXEC, 0));
  if (stream == nullptr) return false;
  std::vector<std::string> names;
  while (const dirent* entry = readdir(stream)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  closedir(stream);
  bool removed = true;
  for (const std::string& name : names) removed = removeTree(directory.get(), name) && removed;
  return removed;
}

bool removeTree(int parent, const std::string& name) {
  if (unlinkat(parent, name.c_str(), 0) == 0) return true;
  if (errno != EISDIR && errno != EPERM) return false;
  FileDescriptor directory(
      openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!directory) return false;
  return removeContents(std::move(directory)) && unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0;
}

}  // namespace

std::string lastPathComponent(const std::string& path) {
  const auto end = path.find_last_not_of('/');
  if (end == std::string::npos) return path.substr(0, 1);
  const auto slash = path.find_last_of('/', end);
  const auto start = slash == std::string::npos ? 0 : slash + 1;
  return path.substr(start, end - start + 1);
}

std::string stringByDeletingPathExtension(const std::string& path) {
  const auto end = path.find_last_not_of('/');
  if (end == std::string::npos) return path.substr(0, 1);
  std::string trimmed = path.substr(0, end + 1);
  const std::string name = lastPathComponent(trimmed);
  const auto dot = name.find_last_of('.');
  // A leading dot belongs to the name.
  if (dot == std::string::npos || dot == 0) return trimmed;
  return trimmed.substr(0, trimmed.size() - (name.size() - dot));
}

bool fileExistsAtPath(const std::string& path) {
  struct stat status {};
  return itemExists(path, status);
}

bool fileExistsAtPath(const std::string& path, bool& isDirectory) {
  struct stat status {};
  if (!itemExists(path, status)) return false;
  isDirectory = S_ISDIR(status.st_mode);
  return true;
}

bool createDirectoryAtPath(const std::string& path) {
  // This creates the parent of an item in the directory, but not the item.
  return findItemMakingDirectories(path + "/item").has_value();
}

bool removeItemAtPath(const std::string& path) {
  auto item = findItem(path);
  return item && removeTree(item->directory.get(), item->name);
}

bool moveItemAtPath(const std::string& path, const std::string& target) {
  auto from = findItem(path);
  auto to = findItem(target);
  struct stat status {};
  if (!from || !to || statusOf(*to, status)) return false;
  if (renameat(from->directory.get(), from->name.c_str(), to->directory.get(), to->name.c_str()) ==
      0) {
    return true;
  }
  return errno == EXDEV && copyItemAtPath(path, target) && removeItemAtPath(path);
}

bool copyItemAtPath(const std::string& path, const std::string& target) {
  const auto contents = NSData::dataWithContentsOfFile(path);
  const auto to = findItem(target);
  struct stat status {};
  if (!contents || !to || statusOf(*to, status)) return false;
  return contents->writeToFileAtomically(target);
}

}  // namespace platform
