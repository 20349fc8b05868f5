#include "platform/linux/file_contents.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/out_of_memory.h"

namespace platform {
namespace {

// A name that no other process thinks of, whatever its number, even one from before a crash.
std::string temporaryName(const std::string& name) {
  std::uint64_t random = 0;
  [[maybe_unused]] const ssize_t size = getrandom(&random, sizeof random, 0);
  // A name's own length may be at the file system's limit already.
  constexpr std::size_t keptLength = 100;
  return name.substr(0, keptLength) + "." + std::to_string(random) + ".tmp";
}

}  // namespace

std::optional<OpenFile> openFile(const std::string& path, std::size_t limit) {
  auto item = locateItem(path);
  if (!item) return std::nullopt;
  // Not blocking: opening a pipe must not wait for a writer.
  OpenFile file{FileDescriptor(openat(item->directory.get(), item->name.c_str(),
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
  if (!file) return std::nullopt;
  Bytes contents = unlessOutOfMemory([&file] { return Bytes(file->size); });
  if (contents.size() != file->size) return std::nullopt;
  contents.resize(readAt(file->descriptor, 0, contents));
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

FileDescriptor createFile(int directory, const std::string& name) {
  constexpr mode_t mode = 0644;
  return FileDescriptor(
      openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
}

bool replaceFile(const std::string& path, const MakeFile& make) {
  auto item = locateItem(path);
  if (!item) return false;
  const int directory = item->directory.get();
  const std::string temporary = temporaryName(item->name);
  const bool isReplaced =
      make(directory, temporary) &&
      renameat(directory, temporary.c_str(), directory, item->name.c_str()) == 0;
  // Also where the new file is a link to the old one: such a rename does nothing.
  unlinkat(directory, temporary.c_str(), 0);
  return isReplaced;
}

bool writeToFileAtomically(const Bytes& contents, const std::string& path) {
  return replaceFile(path, [&contents](int directory, const std::string& name) {
    const FileDescriptor file = createFile(directory, name);
    return file && writeAll(file, contents);
  });
}

}  // namespace platform
