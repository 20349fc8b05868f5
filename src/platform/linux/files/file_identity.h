// Recognizes a file with the same contents without reading it.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>

#include <sys/types.h>

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// Differs from that of every file with other contents, of the past or of the present.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  std::int64_t size = 0;
  // In nanoseconds.
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  // NOLINTNEXTLINE(modernize-use-nullptr): it takes a comparison of the compiler for a pointer.
  friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

// Returns the identity of an open file. Returns nothing if the file was changed a moment ago,
// because another change could leave its times as they are, or if it cannot be examined.
std::optional<FileIdentity> identityOf(const FileDescriptor& file);

}  // namespace platform::backend
