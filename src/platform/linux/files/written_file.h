// The file that some bytes were last written to: while it still holds them, writing the same bytes
// elsewhere makes a hard link to it. So equal frames of an animation take the space of one:
//
// - the canvas of a GIF returns the same image object for a frame that looks like the one before;
// - the image keeps the PNG that was made of it (UIImage::Impl::png);
// - the PNG's NSData keeps the file that it was written to, which is this object.
//
// Files are only ever replaced as a whole, so no program of ours writes through a link. If another
// one has, the modification time tells.
#pragma once

#include <cstddef>
#include <ctime>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// One thread at a time.
class WrittenFile {
 public:
  // size: of the bytes that are written, always the same ones.
  explicit WrittenFile(std::size_t size) : size_(size) {}

  // Makes a new file: a link to the last one or, if that cannot be, one that write fills. Returns
  // false if it is incomplete.
  bool make(int directory, const std::string& name,
            const std::function<bool(const FileDescriptor& file)>& write);

 private:
  struct Moment {
    time_t seconds;
    long nanoseconds;
    friend bool operator==(const Moment&, const Moment&) = default;
  };
  bool link(int directory, const std::string& name) const;
  std::optional<Moment> modificationTime() const;

  const std::size_t size_;
  FileDescriptor file_;
  std::optional<Moment> writtenTime_;
};

}  // namespace platform::backend
