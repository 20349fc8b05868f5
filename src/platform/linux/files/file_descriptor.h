// Owns a file descriptor.
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
  // Gives the descriptor up: the caller closes it.
  int release() { return std::exchange(value_, -1); }
  explicit operator bool() const { return value_ >= 0; }

 private:
  int value_;
};

}  // namespace platform::backend
