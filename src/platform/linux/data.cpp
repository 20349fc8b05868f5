#include "platform/data.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/data_storage.h"
#include "platform/linux/file_contents.h"

namespace platform {
namespace {

constexpr std::size_t windowSize = std::size_t{1} << 16;
using Window = std::array<std::uint8_t, windowSize>;

// Remembers the file that it was last written to: the next one can be a link to it.
class InMemory : public NSData::Impl {
 public:
  explicit InMemory(Bytes bytes) : bytes_(std::move(bytes)) {}

  std::size_t length() const override { return bytes_.size(); }

  std::span<const std::uint8_t> view(std::size_t offset,
                                     std::span<std::uint8_t> window) const override {
    const auto rest = std::span(bytes_).subspan(std::min(offset, bytes_.size()));
    return rest.first(std::min(rest.size(), window.size()));
  }

  bool makeFile(int directory, const std::string& name) const override {
    std::lock_guard lock(mutex_);
    if (linkWrittenFile(directory, name)) return true;
    writtenFile_ = createFile(directory, name);
    if (!writtenFile_ || !writeAll(writtenFile_, bytes_)) return false;
    writtenTime_ = modificationTime();
    return true;
  }

 private:
  struct Moment {
    time_t seconds;
    long nanoseconds;
    friend bool operator==(const Moment&, const Moment&) = default;
  };

  std::optional<Moment> modificationTime() const {
    struct stat status {};
    if (!writtenFile_ || fstat(writtenFile_.get(), &status) != 0) return std::nullopt;
    if (static_cast<std::size_t>(status.st_size) != bytes_.size()) return std::nullopt;
    return Moment{status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  }

  // Not if somebody has written into that file since.
  bool linkWrittenFile(int directory, const std::string& name) const {
    const auto now = modificationTime();
    if (!now || now != writtenTime_) return false;
    const std::string file = "/proc/self/fd/" + std::to_string(writtenFile_.get());
    return linkat(AT_FDCWD, file.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
  }

  const Bytes bytes_;
  mutable std::mutex mutex_;
  mutable FileDescriptor writtenFile_;
  mutable std::optional<Moment> writtenTime_;
};

// Read piece by piece, not mapped: whoever cuts a mapped file short kills its readers.
class InFile : public NSData::Impl {
 public:
  explicit InFile(OpenFile file) : file_(std::move(file)) {}

  std::size_t length() const override { return file_.size; }

  std::span<const std::uint8_t> view(std::size_t offset,
                                     std::span<std::uint8_t> window) const override {
    const std::size_t rest = file_.size - std::min(offset, file_.size);
    const auto wanted = window.first(std::min(rest, window.size()));
    return wanted.first(readAt(file_.descriptor, offset, wanted));
  }

  bool makeFile(int directory, const std::string& name) const override {
    const FileDescriptor copy = createFile(directory, name);
    if (!copy) return false;
    return copyInKernel(copy) || copyByWindows(copy);
  }

 private:
  // Shares the blocks where the file system can.
  bool copyInKernel(const FileDescriptor& copy) const {
    off_t done = 0;
    while (static_cast<std::size_t>(done) < file_.size) {
      const auto rest = file_.size - static_cast<std::size_t>(done);
      if (copy_file_range(file_.descriptor.get(), &done, copy.get(), nullptr, rest, 0) <= 0) {
        return false;
      }
    }
    return true;
  }

  bool copyByWindows(const FileDescriptor& copy) const {
    if (ftruncate(copy.get(), 0) != 0 || lseek(copy.get(), 0, SEEK_SET) != 0) return false;
    Window window;
    for (std::size_t offset = 0; offset < file_.size;) {
      const auto piece = view(offset, window);
      if (piece.empty() || !writeAll(copy, piece)) return false;
      offset += piece.size();
    }
    return true;
  }

  const OpenFile file_;
};

}  // namespace

NSData::NSData(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}
NSData::~NSData() = default;

DataRef NSData::dataWithBytes(Bytes bytes) {
  return std::make_shared<NSData>(std::make_unique<InMemory>(std::move(bytes)));
}

DataRef NSData::dataWithContentsOfFile(const std::string& path) {
  auto file = openFile(path);
  return file ? dataOfFile(std::move(*file)) : nullptr;
}

DataRef dataOfFile(OpenFile file) {
  return std::make_shared<NSData>(std::make_unique<InFile>(std::move(file)));
}

std::size_t NSData::length() const {
  return impl_->length();
}

bool NSData::isEqualToData(const NSData& other) const {
  if (length() != other.length()) return false;
  Window window;
  Window otherWindow;
  for (std::size_t offset = 0; offset < length(); offset += windowSize) {
    const auto piece = impl_->view(offset, window);
    const auto otherPiece = other.impl_->view(offset, otherWindow);
    if (piece.empty() || !std::ranges::equal(piece, otherPiece)) return false;
  }
  return true;
}

bool NSData::writeToFileAtomically(const std::string& path) const {
  return replaceFile(path, [this](int directory, const std::string& name) {
    return impl_->makeFile(directory, name);
  });
}

}  // namespace platform
