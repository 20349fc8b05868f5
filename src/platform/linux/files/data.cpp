#include "platform/data.h"

#include <algorithm>
#include <array>
#include <climits>
#include <mutex>
#include <utility>

#include <sys/uio.h>
#include <unistd.h>

#include "platform/linux/files/data.h"
#include "platform/linux/files/written_file.h"

namespace platform {
using namespace backend;

namespace {

constexpr std::size_t windowSize = std::size_t{1} << 16;
using Window = std::array<std::uint8_t, windowSize>;

class InMemory : public NSData::Impl {
 public:
  explicit InMemory(std::vector<Piece> pieces)
      : pieces_(std::move(pieces)), length_(totalSize(pieces_)), writtenFile_(length_) {}

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
      // Bytes are returned in place only if all of them are in one piece.
      if (done == 0 && count == window.size()) return here.first(count);
      std::copy_n(here.begin(), count, window.begin() + static_cast<std::ptrdiff_t>(done));
      done += count;
      offset = 0;
    }
    return window.first(done);
  }

  bool makeFile(int directory, const std::string& name) const override {
    std::lock_guard lock(mutex_);
    return writtenFile_.make(directory, name,
                             [this](const FileDescriptor& file) { return writePieces(file); });
  }

 private:
  static std::size_t totalSize(const std::vector<Piece>& pieces) {
    std::size_t size = 0;
    for (const Piece& piece : pieces) size += piece.bytes.size();
    return size;
  }

  // Writes all pieces in one call, unless the system accepts fewer bytes.
  bool writePieces(const FileDescriptor& file) const {
    std::vector<iovec> parts;
    for (const Piece& piece : pieces_) {
      parts.push_back({const_cast<std::uint8_t*>(piece.bytes.data()), piece.bytes.size()});
    }
    const auto count = static_cast<int>(std::min<std::size_t>(parts.size(), IOV_MAX));
    const ssize_t written = writev(file.get(), parts.data(), count);
    auto rest = static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    for (const Piece& piece : pieces_) {
      const std::size_t skipped = std::min(rest, piece.bytes.size());
      rest -= skipped;
      if (!writeAll(file, piece.bytes.subspan(skipped))) return false;
    }
    return true;
  }

  const std::vector<Piece> pieces_;
  const std::size_t length_;
  mutable std::mutex mutex_;
  mutable WrittenFile writtenFile_;
};

// Reads the file when needed instead of mapping it: truncating a mapped file would crash its
// readers.
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
