#include "platform/data.h"

#include <algorithm>
#include <array>
#include <climits>
#include <mutex>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include "platform/linux/files/data.h"
#include "platform/linux/files/file_contents.h"

namespace platform {
using namespace backend;

namespace {

constexpr std::size_t windowSize = std::size_t{1} << 16;
using Window = std::array<std::uint8_t, windowSize>;

// Remembers the file that it was last written to: the next one can be a link to it.
class InMemory : public NSData::Impl {
 public:
  explicit InMemory(std::vector<Piece> pieces) : pieces_(std::move(pieces)) {
    for (const Piece& piece : pieces_) length_ += piece.bytes.size();
  }

  std::size_t length() const override { return length_; }

  std::span<const std::uint8_t> view(std::size_t offset,
                                     std::span<std::uint8_t> window) const override {
    std::size_t done = 0;
    for (const Piece& piece : pieces_) {
      if (offset >= piece.bytes.size()) {
        offset -= piece.bytes.size();
        continue;
      }
      const auto here = piece.bytes.subspan(offset);
      const std::size_t count = std::min(here.size(), window.size() - done);
      // In place only if it is all of what is wanted.
      if (done == 0 && count == window.size()) return here.first(count);
      std::copy_n(here.begin(), count, window.begin() + static_cast<std::ptrdiff_t>(done));
      done += count;
      offset = 0;
    }
    return window.first(done);
  }

  bool makeFile(int directory, const std::string& name) const override {
    std::lock_guard lock(mutex_);
    if (linkWrittenFile(directory, name)) return true;
    writtenFile_ = createFile(directory, name);
    if (!writtenFile_ || !writePieces()) return false;
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
    if (static_cast<std::size_t>(status.st_size) != length_) return std::nullopt;
    return Moment{status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  }

  // In one call, unless the system takes less.
  bool writePieces() const {
    std::vector<iovec> parts;
    for (const Piece& piece : pieces_) {
      parts.push_back({const_cast<std::uint8_t*>(piece.bytes.data()), piece.bytes.size()});
    }
    const auto count = static_cast<int>(std::min<std::size_t>(parts.size(), IOV_MAX));
    const ssize_t written = writev(writtenFile_.get(), parts.data(), count);
    auto rest = static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    for (const Piece& piece : pieces_) {
      const std::size_t skipped = std::min(rest, piece.bytes.size());
      rest -= skipped;
      if (!writeAll(writtenFile_, piece.bytes.subspan(skipped))) return false;
    }
    return true;
  }

  // Not if somebody has written into that file since.
  bool linkWrittenFile(int directory, const std::string& name) const {
    const auto now = modificationTime();
    if (!now || now != writtenTime_) return false;
    const std::string file = "/proc/self/fd/" + std::to_string(writtenFile_.get());
    return linkat(AT_FDCWD, file.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
  }

  const std::vector<Piece> pieces_;
  std::size_t length_ = 0;
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
    return copy && copyFile(file_.descriptor, copy);
  }

 private:
  const OpenFile file_;
};

}  // namespace

NSData::NSData(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}
NSData::~NSData() = default;

DataRef NSData::dataWithBytes(Bytes bytes) {
  auto owner = std::make_shared<const Bytes>(std::move(bytes));
  return dataOfPieces({{owner, *owner}});
}

DataRef backend::dataOfPieces(std::vector<Piece> pieces) {
  return std::make_shared<NSData>(std::make_unique<InMemory>(std::move(pieces)));
}

DataRef NSData::dataWithContentsOfFile(const std::string& path) {
  auto file = openFile(path);
  return file ? dataOfFile(std::move(*file)) : nullptr;
}

DataRef backend::dataOfFile(OpenFile file) {
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
