#include "platform/file_manager.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/device_root.h"
#include "platform/linux/out_of_memory.h"

namespace platform {
namespace {

constexpr mode_t fileMode = 0644;

bool statusOf(const ItemLocation& item, struct stat& status) {
  return fstatat(item.directory.get(), item.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

// A link counts as nothing: it is never followed.
bool findItem(const std::string& path, struct stat& status) {
  auto item = locateItem(path);
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

bool writeAll(int descriptor, const Bytes& contents) {
  std::size_t done = 0;
  while (done < contents.size()) {
    const ssize_t count = write(descriptor, contents.data() + done, contents.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

// A name that no other process thinks of, whatever its number, even one from before a crash.
std::string temporaryName(const std::string& name) {
  std::uint64_t random = 0;
  [[maybe_unused]] const ssize_t size = getrandom(&random, sizeof random, 0);
  // A name's own length may be at the file system's limit already.
  constexpr std::size_t keptLength = 100;
  return name.substr(0, keptLength) + "." + std::to_string(random) + ".tmp";
}

// Whether a new file of this name now holds the contents whole.
bool writeNewFile(int directory, const std::string& name, const Bytes& contents) {
  FileDescriptor file(
      openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, fileMode));
  return file && writeAll(file.get(), contents);
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
  return findItem(path, status);
}

bool fileExistsAtPath(const std::string& path, bool& isDirectory) {
  struct stat status {};
  if (!findItem(path, status)) return false;
  isDirectory = S_ISDIR(status.st_mode);
  return true;
}

bool createDirectoryAtPath(const std::string& path) {
  // The item inside the wanted directory does not matter, only that its parent is made.
  return locateItemMakingDirectories(path + "/item").has_value();
}

bool removeItemAtPath(const std::string& path) {
  auto item = locateItem(path);
  return item && removeTree(item->directory.get(), item->name);
}

bool moveItemAtPath(const std::string& path, const std::string& target) {
  auto from = locateItem(path);
  auto to = locateItem(target);
  struct stat status {};
  if (!from || !to || statusOf(*to, status)) return false;
  if (renameat(from->directory.get(), from->name.c_str(), to->directory.get(), to->name.c_str()) ==
      0) {
    return true;
  }
  return errno == EXDEV && copyItemAtPath(path, target) && removeItemAtPath(path);
}

bool copyItemAtPath(const std::string& path, const std::string& target) {
  auto contents = contentsOfFile(path);
  return contents && !fileExistsAtPath(target) && writeToFileAtomically(*contents, target);
}

std::optional<Bytes> contentsOfFile(const std::string& path, std::size_t limit) {
  auto item = locateItem(path);
  if (!item) return std::nullopt;
  // Not blocking: opening a pipe must not wait for a writer.
  FileDescriptor file(openat(item->directory.get(), item->name.c_str(),
                             O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0) return std::nullopt;
  const auto size = static_cast<std::size_t>(status.st_size);
  if (!S_ISREG(status.st_mode) || size > limit) return std::nullopt;
  Bytes contents = unlessOutOfMemory([size] { return Bytes(size); });
  if (contents.size() != size) return std::nullopt;
  std::size_t done = 0;
  while (done < contents.size()) {
    const ssize_t count = read(file.get(), contents.data() + done, contents.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  contents.resize(done);
  return contents;
}

bool writeToFileAtomically(const Bytes& contents, const std::string& path) {
  auto item = locateItem(path);
  if (!item) return false;
  const int directory = item->directory.get();
  const std::string temporary = temporaryName(item->name);
  if (writeNewFile(directory, temporary, contents) &&
      renameat(directory, temporary.c_str(), directory, item->name.c_str()) == 0) {
    return true;
  }
  unlinkat(directory, temporary.c_str(), 0);
  return false;
}

}  // namespace platform
