// Immutable bytes, in memory or in a file. Those in a file stay there: whoever writes into it,
// instead of replacing it, changes them. Any thread.
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

  struct Impl;
  // Made by the backend only.
  explicit NSData(std::unique_ptr<const Impl> impl);
  const Impl& impl() const { return *impl_; }

 private:
  std::unique_ptr<const Impl> impl_;
};

}  // namespace platform
