#include "platform/linux/files/file_contents.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/files/device_root.h"
#include "platform/linux/out_of_memory.h"

namespace platform::backend {
namespace {

// Returns a random name, so that it collides with no other process's, not even with one that a
// crashed process has left behind.
std::string temporaryName(const std::string& name) {
  std::uint64_t random = 0;
  [[maybe_unused]] const ssize_t size = getrandom(&random, sizeof random, 0);
  // The name itself may already be as long as the file system allows.
  constexpr std::size_t keptLength = 100;
  return name.substr(0, keptLength) + "." + std::to_string(random) + ".tmp";
}

bool flushToDisk(int directory, const std::string& name) {
  const FileDescriptor item(
      openat(directory, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  return item && fsync(item.get()) == 0;
}

}  // namespace

std::optional<OpenFile> openFile(const std::string& path, std::size_t limit) {
  auto item = findItem(path);
  return item ? openFileAt(item->directory.get(), item->name, limit) : std::nullopt;
}

std::optional<OpenFile> openFileAt(int directory, const std::string& name, std::size_t limit) {
  // O_NONBLOCK, because opening a pipe must not wait for a writer.
  OpenFile file{FileDescriptor(openat(directory, name.c_str(),
                                      O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)),
                0};
  struct stat status {};
  if (!file.descriptor || fstat(file.descriptor.get(), &status) != 0) return std::nullopt;
  file.size = static_cast<std::size_t>(status.st_size);
  if (!S_ISREG(status.st_mode) || file.size > limit) return std::nullopt;
  return file;
}

std::size_t readAt(const FileDescriptor& file, std::size_t offset, std::span<std::uint8_t> wanted) {
  std::size_t done = 0;
  while (done < wanted.size()) {
    const ssize_t count = pread(file.get(), wanted.data() + done, wanted.size() - done,
                                static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

std::optional<Bytes> contentsOfFile(const std::string& path, std::size_t limit) {
  const auto file = openFile(path, limit);
  return file ? contentsOf(*file) : std::nullopt;
}

std::optional<Bytes> contentsOf(const OpenFile& file) {
  Bytes contents = unlessOutOfMemory([&file] { return Bytes(file.size); });
  if (contents.size() != file.size) return std::nullopt;
  contents.resize(readAt(file.descriptor, 0, contents));
  return contents;
}

bool writeAll(const FileDescriptor& file, std::span<const std::uint8_t> contents) {
  while (!contents.empty()) {
    const ssize_t count = write(file.get(), contents.data(), contents.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    contents = contents.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool copyFile(const FileDescriptor& from, const FileDescriptor& to) {
  struct stat status {};
  if (fstat(from.get(), &status) != 0) return false;
  off_t done = 0;
  while (done < status.st_size) {
    const auto rest = static_cast<std::size_t>(status.st_size - done);
    // Within a file system the blocks may be shared; between two, the kernel copies the bytes.
    ssize_t count = copy_file_range(from.get(), &done, to.get(), nullptr, rest, 0);
    if (count <= 0) count = sendfile(to.get(), from.get(), &done, rest);
    if (count == 0 || (count < 0 && errno != EINTR)) return false;
  }
  return true;
}

FileDescriptor createFile(int directory, const std::string& name) {
  constexpr mode_t mode = 0644;
  return FileDescriptor(
      openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
}

bool replaceFile(const std::string& path, const MakeFile& make, Durability durability) {
  auto item = findItem(path);
  return item && replaceFileAt(item->directory.get(), item->name, make, durability);
}

bool replaceFileAt(int directory, const std::string& name, const MakeFile& make,
                   Durability durability) {
  const std::string temporary = temporaryName(name);
  const bool isDurable = durability == Durability::Durable;
  bool isReplaced = make(directory, temporary);
  isReplaced = isReplaced && (!isDurable || flushToDisk(directory, temporary));
  isReplaced = isReplaced && renameat(directory, temporary.c_str(), directory, name.c_str()) == 0;
  if (isReplaced && isDurable) flushToDisk(directory, ".");
  // Needed even after a successful rename: it does nothing if both names are links to one file.
  unlinkat(directory, temporary.c_str(), 0);
  return isReplaced;
}

bool writeToFileAtomically(const Bytes& contents, const std::string& path, Durability durability) {
  auto make = [&contents](int directory, const std::string& name) {
    const FileDescriptor file = createFile(directory, name);
    return file && writeAll(file, contents);
  };
  return replaceFile(path, make, durability);
}

bool makeDurable(const std::string& path) {
  const auto item = findItem(path);
  return item && flushToDisk(item->directory.get(), item->name) &&
         flushToDisk(item->directory.get(), ".");
}

}  // namespace platform::backend
