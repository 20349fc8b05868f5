#include "platform/linux/gif_lzw.h"

#include <array>
#include <cstddef>
#include <vector>

namespace platform::gif {
namespace {

constexpr int mostCodeBits = 12;
constexpr int tableSize = 1 << mostCodeBits;

// Codes of changing width, least significant bit first, across the sub-blocks' borders.
class CodeReader {
 public:
  explicit CodeReader(std::span<const std::uint8_t> subBlocks) : rest_(subBlocks) {}

  // -1 at the end of the data.
  int next(int width) {
    while (bitCount_ < width) {
      const int byte = nextByte();
      if (byte < 0) return -1;
      bits_ |= static_cast<unsigned>(byte) << bitCount_;
      bitCount_ += 8;
    }
    const int code = static_cast<int>(bits_ & ((1U << width) - 1));
    bits_ >>= width;
    bitCount_ -= width;
    return code;
  }

 private:
  int nextByte() {
    while (inBlock_ == 0) {
      if (rest_.empty() || rest_.front() == 0) return -1;
      inBlock_ = rest_.front();
      rest_ = rest_.subspan(1);
    }
    if (rest_.empty()) return -1;
    --inBlock_;
    const int byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
  }

  std::span<const std::uint8_t> rest_;
  std::size_t inBlock_ = 0;
  unsigned bits_ = 0;
  int bitCount_ = 0;
};

class Decoder {
 public:
  Decoder(std::span<const std::uint8_t> subBlocks, int minimumCodeSize,
          std::span<std::uint8_t> output)
      : codes_(subBlocks), clearCode_(1 << minimumCodeSize), rest_(output) {
    for (int code = 0; code < clearCode_; ++code) {
      table_[static_cast<std::size_t>(code)] = {-1, static_cast<std::uint8_t>(code), 1};
    }
    clear();
  }

  bool run() {
    while (!rest_.empty()) {
      const int code = codes_.next(width_);
      if (code == clearCode_) {
        clear();
      } else if (code < 0 || code == clearCode_ + 1 || !accept(code)) {
        return false;
      }
    }
    return true;
  }

 private:
  struct Entry {
    int prefix;
    std::uint8_t last;
    int length;
  };

  void clear() {
    width_ = minimumWidth();
    used_ = clearCode_ + 2;
    previous_ = -1;
  }

  int minimumWidth() const {
    int width = 1;
    while (1 << width <= clearCode_) ++width;
    return width;
  }

  Entry& entry(int code) { return table_[static_cast<std::size_t>(code)]; }

  std::uint8_t firstOf(int code) {
    while (entry(code).prefix >= 0) code = entry(code).prefix;
    return entry(code).last;
  }

  bool accept(int code) {
    const bool isNext = code == used_ && previous_ >= 0 && used_ < tableSize;
    if (code >= used_ && !isNext) return false;
    if (previous_ >= 0 && used_ < tableSize) {
      add({previous_, firstOf(isNext ? previous_ : code), entry(previous_).length + 1});
    }
    write(code);
    previous_ = code;
    return true;
  }

  void add(Entry added) {
    entry(used_++) = added;
    if (used_ == 1 << width_ && width_ < mostCodeBits) ++width_;
  }

  // A code's string is known from its end; what does not fit any more is left out.
  void write(int code) {
    const auto length = static_cast<std::size_t>(entry(code).length);
    for (std::size_t at = length; at-- > 0; code = entry(code).prefix) {
      if (at < rest_.size()) rest_[at] = entry(code).last;
    }
    rest_ = rest_.subspan(std::min(length, rest_.size()));
  }

  CodeReader codes_;
  int clearCode_;
  std::span<std::uint8_t> rest_;
  int width_ = 0;
  int used_ = 0;
  int previous_ = -1;
  std::array<Entry, tableSize> table_;
};

}  // namespace

bool decodeLzw(std::span<const std::uint8_t> subBlocks, int minimumCodeSize,
               std::span<std::uint8_t> indices) {
  constexpr int largestMinimumCodeSize = 8;
  if (minimumCodeSize < 1 || minimumCodeSize > largestMinimumCodeSize) return false;
  return Decoder(subBlocks, minimumCodeSize, indices).run();
}

}  // namespace platform::gif
