#include "platform/linux/images/gif/lzw.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <tuple>

#include "platform/linux/images/picture/picture.h"

namespace platform::backend::gif {
namespace {

constexpr unsigned maxCodeBits = 12;
constexpr unsigned tableSize = 1U << maxCodeBits;

// Bits that have been read ahead. The next ones are the lowest.
struct Bits {
  std::uint64_t value = 0;
  unsigned count = 0;

  unsigned take(unsigned width) {
    const auto taken = static_cast<unsigned>(value & ((1U << width) - 1));
    value >>= width;
    count -= width;
    return taken;
  }
};

// Reads an image's data in chunks and delivers them eight bytes at a time.
class CodeInput {
 public:
  explicit CodeInput(SubBlocks& data) : data_(data) {}

  // Adds bits. Returns false if there are fewer than wanted, because the data have ended.
  bool refill(Bits& bits, unsigned wanted) {
    if (end_ - next_ < sizeof bits.value) return refillAtTheEdge(bits, wanted);
    std::uint64_t ahead = 0;
    std::memcpy(&ahead, &chunk_[next_], sizeof ahead);
    bits.value |= ahead << bits.count;
    const unsigned taken = (63 - bits.count) / 8;
    next_ += taken;
    bits.count += taken * 8;
    return true;
  }

 private:
  static constexpr std::size_t chunkSize = std::size_t{1} << 14;
  static_assert(std::endian::native == std::endian::little);

  bool refillAtTheEdge(Bits& bits, unsigned wanted) {
    if (!ended_) readChunk();
    for (; next_ < end_ && bits.count <= 56; bits.count += 8) {
      bits.value |= std::uint64_t{chunk_[next_++]} << bits.count;
    }
    return bits.count >= wanted;
  }

  void readChunk() {
    std::copy(chunk_.begin() + static_cast<std::ptrdiff_t>(next_),
              chunk_.begin() + static_cast<std::ptrdiff_t>(end_), chunk_.begin());
    end_ -= next_;
    next_ = 0;
    end_ += data_.read(std::span(chunk_).subspan(end_));
    ended_ = end_ < chunk_.size();
  }

  SubBlocks& data_;
  std::array<std::uint8_t, chunkSize> chunk_;
  std::size_t next_ = 0;
  std::size_t end_ = 0;
  bool ended_ = false;
};

// The place where the output already contains a code's string.
struct Entry {
  std::uint32_t offset;
  std::uint32_t length;
};

using Vector = std::array<std::uint8_t, 16>;

// Copies through a register, because the two may overlap.
inline void copyVector(std::uint8_t* target, const std::uint8_t* source) {
  Vector vector;
  std::memcpy(vector.data(), source, vector.size());
  std::memcpy(target, vector.data(), vector.size());
}

// Copies forward in whole vectors, and so may write past the end, where the bytes are either spare
// or written later. If a string overlaps its copy, it repeats itself.
inline void copyString(std::uint8_t* target, const std::uint8_t* source, std::size_t length) {
  constexpr std::size_t vector = std::tuple_size_v<Vector>;
  const auto distance = static_cast<std::size_t>(target - source);
  if (distance < length && distance < vector) [[unlikely]] {
    for (std::size_t at = 0; at < length; ++at) target[at] = source[at];
    return;
  }
  copyVector(target, source);
  for (std::size_t at = vector; at < length; at += vector) copyVector(target + at, source + at);
}

}  // namespace

// Every code stands for a string that the output already contains. Each code that is read adds a
// new one, whose string is that of the code before it plus the index that follows it in the output.
//
// The state is in local variables. The output consists of bytes, which may alias any member, so the
// compiler would have to load members again after every store.
class LzwDecoder {
 public:
  LzwDecoder(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer)
      : input_(data), clearCode_(1U << minimumCodeSize), buffer_(buffer) {
    for (std::uint32_t code = 0; code < IndexBuffer::singles; ++code) table_[code] = {code, 1};
  }

  std::size_t run() {
    std::uint8_t* const base = buffer_.bytes_.get();
    std::uint8_t* next = buffer_.start();
    std::uint8_t* const end = next + buffer_.count_;
    const auto firstWidth = static_cast<unsigned>(std::bit_width(clearCode_));
    unsigned width = firstWidth;
    unsigned used = clearCode_ + 2;
    Entry previous = none;
    Bits bits;
    while (next < end) {
      if (bits.count < width && !input_.refill(bits, width)) break;
      const unsigned code = bits.take(width);
      if (code - clearCode_ <= 1) [[unlikely]] {
        if (code != clearCode_) break;
        width = firstWidth;
        used = clearCode_ + 2;
        previous = none;
        continue;
      }
      if (previous.length != 0 && used < tableSize) {
        table_[used++] = {previous.offset, previous.length + 1};
        if (used == 1U << width && width < maxCodeBits) ++width;
      }
      if (code >= used) break;
      const Entry entry = table_[code];
      const std::size_t length =
          std::min<std::size_t>(entry.length, static_cast<std::size_t>(end - next));
      copyString(next, base + entry.offset, length);
      previous = {static_cast<std::uint32_t>(next - base), entry.length};
      next += length;
    }
    return static_cast<std::size_t>(next - buffer_.start());
  }

 private:
  static constexpr Entry none{0, 0};

  CodeInput input_;
  const unsigned clearCode_;
  IndexBuffer& buffer_;
  std::array<Entry, tableSize> table_;
};

void IndexBuffer::reset(std::size_t count) {
  const std::size_t needed = singles + spare + count + spare;
  if (needed > capacity_) {
    // The old buffer is freed first, so that both never exist at the same time.
    bytes_.reset();
    capacity_ = 0;
    bytes_.reset(new std::uint8_t[needed]);
    capacity_ = needed;
    for (std::size_t single = 0; single < singles; ++single) {
      bytes_[single] = static_cast<std::uint8_t>(single);
    }
  }
  count_ = count;
}

std::size_t decodeLzw(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer) {
  constexpr int maxMinimumCodeSize = 8;
  if (minimumCodeSize < 1 || minimumCodeSize > maxMinimumCodeSize) return 0;
  return LzwDecoder(data, minimumCodeSize, buffer).run();
}

int decodeImage(const NSData::Impl& data, const SubImage& image, IndexBuffer& buffer) {
  const std::int64_t pixels = std::int64_t{image.width} * image.height;
  int rows = 0;
  if (pixels > 0 && pixels <= maxPixels) {
    buffer.reset(static_cast<std::size_t>(pixels));
    SubBlocks blocks(data, image.dataOffset);
    rows = static_cast<int>(decodeLzw(blocks, image.minimumCodeSize, buffer) / image.width);
  }
  if (rows == 0 || rows < image.height) noteDamage();
  return rows;
}

}  // namespace platform::backend::gif
