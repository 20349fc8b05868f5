#include "platform/linux/property_list_guard.h"

#include <algorithm>
#include <string_view>

namespace platform {
namespace {

std::string_view textOf(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::size_t occurrences(std::string_view text, std::string_view word) {
  std::size_t count = 0;
  for (auto at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++count;
  return count;
}

bool isFlatXml(std::string_view xml) {
  // The library's time grows with the square of the entities in a text.
  constexpr std::size_t mostEntities = 50000;
  // However the markup hides where they end, containers are not nested deeper than their number.
  constexpr std::size_t mostContainers = 1000;
  return occurrences(xml, "&") <= mostEntities &&
         occurrences(xml, "<array") + occurrences(xml, "<dict") <= mostContainers;
}

// The objects of a binary list, as far as they refer to each other.
class BinaryList {
 public:
  explicit BinaryList(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  bool isFlat() {
    constexpr std::size_t trailerSize = 32;
    if (bytes_.size() < trailerSize) return true;
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetSize_ = bytes_[trailer + 6];
    referenceSize_ = bytes_[trailer + 7];
    objectCount_ = number(trailer + 8, 8);
    offsetTable_ = number(trailer + 24, 8);
    return visit(number(trailer + 16, 8), 0);
  }

 private:
  // A list of ours has two levels; other programs' values in it may have some more.
  static constexpr int deepestNesting = 64;
  // Every visit is an object that the library would make.
  static constexpr int mostVisits = 1 << 17;

  std::uint64_t number(std::uint64_t at, std::uint64_t size) const {
    std::uint64_t value = 0;
    for (std::uint64_t each = 0; each < size && each < 8; ++each) {
      value = value << 8 | (at + each < bytes_.size() ? bytes_[at + each] : 0);
    }
    return value;
  }

  bool visit(std::uint64_t object, int depth) {
    if (++visits_ > mostVisits || depth > deepestNesting) return false;
    if (object >= objectCount_) return true;
    std::uint64_t at = number(offsetTable_ + object * offsetSize_, offsetSize_);
    if (at >= bytes_.size()) return true;
    const int marker = bytes_[at++];
    constexpr int arrayType = 0xA;
    constexpr int setType = 0xC;
    constexpr int dictionaryType = 0xD;
    const int type = marker >> 4;
    if (type != arrayType && type != setType && type != dictionaryType) return true;
    std::uint64_t count = marker & 0xF;
    if (count == 0xF) {
      // The count follows as an integer of 1, 2, 4 or 8 bytes.
      const std::uint64_t integerMarker = number(at, 1);
      if (integerMarker < 0x10 || integerMarker > 0x13) return false;
      const std::uint64_t size = std::uint64_t{1} << (integerMarker & 0x3);
      count = number(at + 1, size);
      at += 1 + size;
    }
    return visitAll(at, type == dictionaryType ? 2 * std::min(count, objectCount_) : count, depth);
  }

  bool visitAll(std::uint64_t references, std::uint64_t count, int depth) {
    const std::uint64_t size = std::max<std::uint64_t>(referenceSize_, 1);
    for (std::uint64_t each = 0; each < count && references + each * size < bytes_.size(); ++each) {
      if (!visit(number(references + each * size, size), depth + 1)) return false;
    }
    return true;
  }

  std::span<const std::uint8_t> bytes_;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t objectCount_ = 0;
  std::uint64_t offsetTable_ = 0;
  int visits_ = 0;
};

}  // namespace

bool isBinaryPropertyList(std::span<const std::uint8_t> bytes) {
  return textOf(bytes).starts_with("bplist");
}

bool isHarmlessPropertyList(std::span<const std::uint8_t> bytes) {
  if (bytes.empty() || bytes.size() > largestPropertyList) return false;
  return isBinaryPropertyList(bytes) ? BinaryList(bytes).isFlat() : isFlatXml(textOf(bytes));
}

}  // namespace platform
