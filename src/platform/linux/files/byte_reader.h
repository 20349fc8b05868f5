// Reads bytes in order, through a small window where they lie in a file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/linux/files/data.h"

namespace platform::backend {

// Past the end everything is 0 and ended() true.
class ByteReader {
 public:
  explicit ByteReader(const NSData::Impl& data, std::size_t offset = 0)
      : data_(data), next_(offset) {}
  ByteReader(const ByteReader&) = delete;
  ByteReader& operator=(const ByteReader&) = delete;

  bool ended() const { return ended_; }
  // Where the next byte lies.
  std::size_t offset() const { return next_ - rest_.size(); }

  int byte() {
    if (rest_.empty() && !refill()) return 0;
    const int value = rest_.front();
    rest_ = rest_.subspan(1);
    return value;
  }

  // Little-endian.
  int word() {
    const int low = byte();
    return low | byte() << 8;
  }

  // How many were there.
  std::size_t read(std::span<std::uint8_t> target);
  // Past the end as well, which is noticed with the next byte.
  void skip(std::size_t count);

 private:
  bool refill();

  static constexpr std::size_t windowSize = std::size_t{1} << 15;
  const NSData::Impl& data_;
  std::array<std::uint8_t, windowSize> window_;
  std::span<const std::uint8_t> rest_;
  // Where what follows the rest lies.
  std::size_t next_;
  bool ended_ = false;
};

}  // namespace platform::backend
