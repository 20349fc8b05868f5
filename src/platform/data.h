// Immutable bytes, in memory or in a file. Bytes in a file are read when needed: overwriting the
// file in place changes them, replacing it does not. Any thread.
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
  static DataRef dataWithBytes(Bytes bytes);
  // The contents of a regular file; nullptr if there is none that can be read, or if it is too
  // large.
  static DataRef dataWithContentsOfFile(const std::string& path);
  ~NSData();

  std::size_t length() const;
  bool isEqualToData(const NSData& other) const;
  // The new file replaces the old one in one rename: a reader sees either, whole.
  bool writeToFileAtomically(const std::string& path) const;

  // Public so that the backend's files can reach it; defined, and made, by the backend only.
  struct Impl;
  explicit NSData(std::unique_ptr<const Impl> impl);
  const Impl& impl() const { return *impl_; }

 private:
  std::unique_ptr<const Impl> impl_;
};

}  // namespace platform
