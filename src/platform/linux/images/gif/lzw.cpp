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

// Bits that have been read ahead. The next ones are the lowest. The others are 0, or those that
// follow.
struct Bits {
  std::uint64_t value = 0;
  unsigned count = 0;

  // Adds whole bytes, so that there are at least 56 bits, from eight that follow. Returns how many
  // bytes were added.
  unsigned addBytes(const std::uint8_t* bytes) {
    std::uint64_t following = 0;
    std::memcpy(&following, bytes, sizeof following);
    value |= following << count;
    const unsigned added = (63 - count) / 8;
    count |= 56;
    return added;
  }

  void dropPartOfByte() { value &= (std::uint64_t{1} << count) - 1; }

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

  // The bytes of the chunk that have not been taken.
  std::span<const std::uint8_t> ahead() const {
    return std::span(chunk_).subspan(next_, end_ - next_);
  }
  void skip(std::size_t count) { next_ += count; }

  // Adds bits. Returns false if there are fewer than wanted, because the data have ended.
  bool refill(Bits& bits, unsigned wanted) {
    if (end_ - next_ < sizeof bits.value) return refillAtTheEdge(bits, wanted);
    next_ += bits.addBytes(&chunk_[next_]);
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
class LzwDecoder {
 public:
  LzwDecoder(SubBlocks& data, int minimumCodeSize, IndexBuffer& buffer)
      : input_(data), clearCode_(1U << minimumCodeSize), buffer_(buffer) {
    for (std::uint32_t code = 0; code < IndexBuffer::singles; ++code) table_[code] = {code, 1};
  }

  std::size_t run() {
    State state{buffer_.bytes_.get(), buffer_.start(), 0, 0, none, {}};
    clearTable(state);
    while (appendMany(state) && appendOne(state)) {
    }
    return static_cast<std::size_t>(state.next - buffer_.start());
  }

 private:
  static constexpr Entry none{0, 0};

  // Kept in local variables. The output consists of bytes, which may alias any member, so the
  // compiler would have to load members again after every store.
  struct State {
    std::uint8_t* base;
    std::uint8_t* next;
    unsigned width;
    unsigned used;
    Entry previous;
    Bits bits;
  };

  const std::uint8_t* end() const { return buffer_.start() + buffer_.count_; }

  void clearTable(State& state) const {
    state.width = static_cast<unsigned>(std::bit_width(clearCode_));
    state.used = clearCode_ + 2;
    state.previous = none;
  }

  // Appends the string of a code, up to end; nullptr means that there is room for any string.
  // Returns false, with nothing appended, if the code is not valid or ends the data.
  [[gnu::always_inline]] bool append(State& state, unsigned code, const std::uint8_t* end) {
    if (code - clearCode_ <= 1) [[unlikely]] {
      clearTable(state);
      return code == clearCode_;
    }
    if (state.previous.length != 0 && state.used < tableSize) {
      table_[state.used++] = {state.previous.offset, state.previous.length + 1};
      if (state.used == 1U << state.width && state.width < maxCodeBits) ++state.width;
    }
    if (code >= state.used) [[unlikely]]
      return false;
    // Read one by one: compilers are slow at splitting a pair.
    const std::uint32_t entryOffset = table_[code].offset;
    const std::uint32_t entryLength = table_[code].length;
    std::size_t length = entryLength;
    if (end != nullptr) length = std::min(length, static_cast<std::size_t>(end - state.next));
    copyString(state.next, state.base + entryOffset, length);
    state.previous = {static_cast<std::uint32_t>(state.next - state.base), entryLength};
    state.next += length;
    return true;
  }

  // Appends the string of one code. Returns false at the end.
  bool appendOne(State& state) {
    if (state.next == end()) return false;
    if (state.bits.count < state.width && !input_.refill(state.bits, state.width)) return false;
    return append(state, state.bits.take(state.width), end());
  }

  // Appends strings as long as neither the input nor the room for the longest possible strings gets
  // short, which need not be checked for each. Returns false at the end.
  bool appendMany(State& outer) {
    State state = outer;
    const auto input = input_.ahead();
    std::size_t taken = 0;
    const bool goesOn = appendWhileSafe(state, input, taken);
    input_.skip(taken);
    state.bits.dropPartOfByte();
    outer = state;
    return goesOn;
  }

  [[gnu::always_inline]] bool appendWhileSafe(State& state, std::span<const std::uint8_t> input,
                                              std::size_t& taken) {
    constexpr int codes = 4;
    constexpr std::ptrdiff_t maxLength = tableSize;
    constexpr std::ptrdiff_t room = codes * maxLength + std::tuple_size_v<Vector>;
    const std::uint8_t* const outputEnd = end();
    while (outputEnd - state.next > room && taken + sizeof(Bits::value) <= input.size()) {
      taken += state.bits.addBytes(&input[taken]);
      for (int each = 0; each < codes; ++each) {
        if (!append(state, state.bits.take(state.width), nullptr)) [[unlikely]]
          return false;
      }
    }
    return true;
  }

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
