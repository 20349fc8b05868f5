// Immutable bytes, in memory or in a file. Bytes in a file are read when needed: overwriting the
// file in place changes them, replacing the file does not. Any thread; several threads may use one
// object at the same time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {

using Bytes = std::vector<std::uint8_t>;

class NSData;
using DataRef = std::shared_ptr<const NSData>;

class NSData {
 public:
  // Returns the given bytes as an object, never nullptr.
  static DataRef dataWithBytes(Bytes bytes);
  // Returns the contents of a regular file. Returns nullptr if there is no such file, or if it is
  // unreadable or, on Linux, larger than 256 MiB.
  static DataRef dataWithContentsOfFile(const std::string& path);
  ~NSData();

  // Returns the number of bytes.
  std::size_t length() const;
  // Returns true if both have the same length and the same bytes.
  bool isEqualToData(const NSData& other) const;
  // Writes a new file and renames it to path, so that a reader sees the complete old file or the
  // complete new one. Returns false, with the old file unchanged, if it cannot be written or its
  // directory does not exist.
  bool writeToFileAtomically(const std::string& path) const;

  // Public only so that all files of the backend can use it. Only the backend defines and creates
  // it.
  struct Impl;
  explicit NSData(std::unique_ptr<const Impl> impl);
  const Impl& impl() const { return *impl_; }

 private:
  std::unique_ptr<const Impl> impl_;
};

}  // namespace platform
