#include "platform/linux/gif_lzw.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace platform::gif {
namespace {

constexpr int mostCodeBits = 12;
constexpr unsigned tableSize = 1U << mostCodeBits;

// Codes of changing width, least significant bit first. Eight bytes are taken in at once.
class CodeReader {
 public:
  explicit CodeReader(SubBlocks& data) : data_(data) {}

  // Whether a code of this width is there now.
  bool has(unsigned width) {
    if (bitCount_ >= width) return true;
    fill();
    return bitCount_ >= width;
  }

  unsigned take(unsigned width) {
    const auto code = static_cast<unsigned>(bits_ & ((1U << width) - 1));
    bits_ >>= width;
    bitCount_ -= width;
    return code;
  }

 private:
  static constexpr std::size_t chunkSize = std::size_t{1} << 14;
  static_assert(std::endian::native == std::endian::little);

  void fill() {
    if (chunk_.size() - next_ < sizeof bits_ && !ended_) readChunk();
    if (end_ - next_ < sizeof bits_) return fillWithTheLastBytes();
    std::uint64_t ahead = 0;
    std::memcpy(&ahead, &chunk_[next_], sizeof ahead);
    bits_ |= ahead << bitCount_;
    const unsigned taken = (63 - bitCount_) / 8;
    next_ += taken;
    bitCount_ += taken * 8;
  }

  void fillWithTheLastBytes() {
    for (; next_ < end_ && bitCount_ <= 56; bitCount_ += 8) {
      bits_ |= std::uint64_t{chunk_[next_++]} << bitCount_;
    }
  }

  void readChunk() {
    std::copy(chunk_.begin() + static_cast<std::ptrdiff_t>(next_),
              chunk_.begin() + static_cast<std::ptrdiff_t>(end_), chunk_.begin());
    end_ -= next_;
    next_ = 0;
    const std::size_t count = data_.read(std::span(chunk_).subspan(end_));
    end_ += count;
    ended_ = end_ < chunk_.size();
  }

  SubBlocks& data_;
  std::uint64_t bits_ = 0;
  unsigned bitCount_ = 0;
  std::array<std::uint8_t, chunkSize> chunk_;
  std::size_t next_ = chunkSize;
  std::size_t end_ = chunkSize;
  bool ended_ = false;
};

// Where the output has a code's string already.
struct Entry {
  std::uint32_t offset;
  std::uint32_t length;
};

// Copies forward, in whole vectors, and so may write past the end; what is there by then is
// overwritten later, or is spare. A string may overlap its copy: it then repeats itself.
inline void copyString(std::uint8_t* target, const std::uint8_t* source, std::size_t length) {
  constexpr std::size_t vector = 16;
  if (static_cast<std::size_t>(target - source) < std::min(length, vector)) {
    for (std::size_t at = 0; at < length; ++at) target[at] = source[at];
    return;
  }
  for (std::size_t at = 0; at < length; at += vector) {
    std::memcpy(target + at, source + at, vector);
  }
}

}  // namespace

// Every code stands for a string that the output has already: a code is added with each one read,
// and its string is that of the code before with the index that follows it there.
class LzwDecoder {
 public:
  LzwDecoder(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer)
      : codes_(data),
        clearCode_(1U << minimumCodeSize),
        base_(buffer.bytes_.get()),
        next_(buffer.start()),
        end_(buffer.start() + buffer.count_) {
    for (std::uint32_t code = 0; code < IndexBuffer::singles; ++code) table_[code] = {code, 1};
    clear();
  }

  bool run() {
    while (next_ < end_) {
      if (!codes_.has(width_)) return false;
      const unsigned code = codes_.take(width_);
      if (code == clearCode_) {
        clear();
      } else if (!accept(code)) {
        return false;
      }
    }
    return true;
  }

 private:
  static constexpr Entry none{0, 0};

  void clear() {
    width_ = static_cast<unsigned>(std::bit_width(clearCode_));
    used_ = clearCode_ + 2;
    previous_ = none;
  }

  bool accept(unsigned code) {
    if (previous_.length != 0 && used_ < tableSize) add();
    if (code >= used_ || code == clearCode_ + 1) return false;
    const Entry entry = table_[code];
    const auto length = std::min<std::size_t>(entry.length, static_cast<std::size_t>(end_ - next_));
    copyString(next_, base_ + entry.offset, length);
    previous_ = {static_cast<std::uint32_t>(next_ - base_), entry.length};
    next_ += length;
    return true;
  }

  void add() {
    table_[used_++] = {previous_.offset, previous_.length + 1};
    if (used_ == 1U << width_ && width_ < mostCodeBits) ++width_;
  }

  CodeReader codes_;
  const unsigned clearCode_;
  std::uint8_t* const base_;
  std::uint8_t* next_;
  std::uint8_t* const end_;
  unsigned width_ = 0;
  unsigned used_ = 0;
  Entry previous_ = none;
  std::array<Entry, tableSize> table_;
};

void IndexBuffer::reset(std::size_t count) {
  const std::size_t needed = singles + spare + count + spare;
  if (needed > capacity_) {
    bytes_.reset();
    bytes_.reset(new std::uint8_t[needed]);
    capacity_ = needed;
    for (std::size_t single = 0; single < singles; ++single) {
      bytes_[single] = static_cast<std::uint8_t>(single);
    }
  }
  count_ = count;
}

bool decodeLzw(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer) {
  constexpr int largestMinimumCodeSize = 8;
  if (minimumCodeSize < 1 || minimumCodeSize > largestMinimumCodeSize) return false;
  return LzwDecoder(data, minimumCodeSize, buffer).run();
}

}  // namespace platform::gif
