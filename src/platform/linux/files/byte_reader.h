// Reads bytes in order, through a small buffer if they are in a file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/linux/files/data.h"

namespace platform::backend {

// Past the end, every byte is 0 and ended() returns true. One thread at a time. Nothing throws.
class ByteReader {
 public:
  // data must outlive this object.
  explicit ByteReader(const NSData::Impl& data, std::size_t offset = 0)
      : data_(data), next_(offset) {}
  ByteReader(const ByteReader&) = delete;
  ByteReader& operator=(const ByteReader&) = delete;

  // Returns true once a read has gone past the end.
  bool ended() const { return ended_; }
  // Returns the offset of the next byte.
  std::size_t offset() const { return next_ - rest_.size(); }

  int byte() {
    if (rest_.empty() && !refill()) return 0;
    const int value = rest_.front();
    rest_ = rest_.subspan(1);
    return value;
  }

  // Reads a 16-bit number, little-endian.
  int word() {
    const int low = byte();
    return low | byte() << 8;
  }

  // Reads as many bytes as fit into target. Returns how many there were.
  std::size_t read(std::span<std::uint8_t> target);
  // Skips bytes, also past the end, which only the next read notices.
  void skip(std::size_t count);

 private:
  bool refill();

  static constexpr std::size_t windowSize = std::size_t{1} << 15;
  const NSData::Impl& data_;
  std::array<std::uint8_t, windowSize> window_;
  std::span<const std::uint8_t> rest_;
  // The offset of the first byte after rest_.
  std::size_t next_;
  bool ended_ = false;
};

}  // namespace platform::backend
