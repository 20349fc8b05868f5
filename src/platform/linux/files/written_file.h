// Remembers the file to which bytes were last written. As long as it still contains them, writing
// them again makes a hard link to it. This way equal frames of an animation take the space of one:
//
// - the canvas of a GIF returns the same image object for a frame that looks like the one before;
// - the image keeps the PNG data made from it (UIImage::Impl::png);
// - that data keeps the file to which it was written, in a WrittenFile.
//
// Linked files stay equal because files are only replaced as a whole. If another program writes
// into one, its modification time changes and no more links are made.
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
  // size is the number of bytes. Every write must write the same ones.
  explicit WrittenFile(std::size_t size) : size_(size) {}

  // Creates a file: a link to the last one or, if that is impossible, a new one, to which write
  // writes the bytes. Returns false if the file could not be created or write returned false.
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
