#include "platform/linux/files/file_descriptor.h"

#include <unistd.h>

namespace platform::backend {

FileDescriptor::~FileDescriptor() {
  if (value_ >= 0) close(value_);
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : value_(std::exchange(other.value_, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  std::swap(value_, other.value_);
  return *this;
}

}  // namespace platform::backend
