// Owns a file descriptor and closes it. -1 means none.
#pragma once

#include <utility>

namespace platform::backend {

class FileDescriptor {
 public:
  explicit FileDescriptor(int value = -1) : value_(value) {}
  ~FileDescriptor();
  FileDescriptor(FileDescriptor&& other) noexcept;
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  int get() const { return value_; }
  // Returns the descriptor, which the caller must close.
  int release() { return std::exchange(value_, -1); }
  // Returns true if there is a descriptor.
  explicit operator bool() const { return value_ >= 0; }

 private:
  int value_;
};

}  // namespace platform::backend
