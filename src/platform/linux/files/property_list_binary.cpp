#include "platform/linux/files/property_list_binary.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include <plist/plist.h>

namespace platform::backend {
namespace {

// Adds up what the objects of a list cost, by following their references.
class Objects {
 public:
  explicit Objects(std::span<const std::uint8_t> bytes)
      : bytes_(bytes), maxSpent_(maxGrowth * bytes.size() + usualSize) {}

  bool areBearable() {
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
  // The settings have two levels; other programs' values in them may have a few more.
  static constexpr int maxDepth = 256;
  // A list may refer to an object more than once, but must not grow much by that.
  static constexpr std::uint64_t maxGrowth = 16;
  static constexpr std::uint64_t usualSize = std::uint64_t{1} << 20;
  // The memory that the library uses for any object.
  static constexpr std::uint64_t objectSize = 128;

  enum Type { Data = 0x4, Ascii = 0x5, Utf16 = 0x6, Array = 0xA, Set = 0xC, Dictionary = 0xD };

  std::uint64_t number(std::uint64_t at, std::uint64_t size) const {
    std::uint64_t value = 0;
    for (std::uint64_t each = 0; each < size && each < 8; ++each) {
      value = value << 8 | (at + each < bytes_.size() ? bytes_[at + each] : 0);
    }
    return value;
  }

  bool visit(std::uint64_t object, int depth) {
    spent_ += objectSize;
    if (spent_ > maxSpent_ || depth > maxDepth) return false;
    if (object >= objectCount_) return true;
    std::uint64_t at = number(offsetTable_ + object * offsetSize_, offsetSize_);
    if (at >= bytes_.size()) return true;
    const int marker = bytes_[at++];
    const int type = marker >> 4;
    if (type != Data && type != Ascii && type != Utf16 && !isContainer(type)) return true;
    std::uint64_t count = marker & 0xF;
    if (count == 0xF) {
      // The count follows as an integer of 1, 2, 4 or 8 bytes.
      const std::uint64_t integerMarker = number(at, 1);
      if (integerMarker < 0x10 || integerMarker > 0x13) return false;
      const std::uint64_t size = std::uint64_t{1} << (integerMarker & 0x3);
      count = number(at + 1, size);
      at += 1 + size;
    }
    if (!isContainer(type)) {
      spent_ += std::min<std::uint64_t>(count, bytes_.size());
      return spent_ <= maxSpent_;
    }
    return visitAll(at, type == Dictionary ? 2 * std::min(count, objectCount_) : count, depth);
  }

  static bool isContainer(int type) { return type == Array || type == Set || type == Dictionary; }

  bool visitAll(std::uint64_t references, std::uint64_t count, int depth) {
    const std::uint64_t size = std::max<std::uint64_t>(referenceSize_, 1);
    for (std::uint64_t each = 0; each < count && references + each * size < bytes_.size(); ++each) {
      if (!visit(number(references + each * size, size), depth + 1)) return false;
    }
    return true;
  }

  std::span<const std::uint8_t> bytes_;
  const std::uint64_t maxSpent_;
  std::uint64_t spent_ = 0;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t objectCount_ = 0;
  std::uint64_t offsetTable_ = 0;
};

}  // namespace

bool isBinaryPropertyList(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view magic = "bplist";
  return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size())
      .starts_with(magic);
}

PropertyListCost costOfBinaryPropertyList(std::span<const std::uint8_t> bytes) {
  return Objects(bytes).areBearable() ? PropertyListCost::Bearable : PropertyListCost::TooHigh;
}

std::string xmlOfBinaryPropertyList(std::span<const std::uint8_t> bytes) {
  plist_t list = nullptr;
  plist_from_bin(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::uint32_t>(bytes.size()), &list);
  const std::unique_ptr<void, decltype(&plist_free)> owner(list, plist_free);
  if (list == nullptr) return "";
  char* xml = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(list, &xml, &length);
  const std::unique_ptr<char, decltype(&plist_to_xml_free)> xmlOwner(xml, plist_to_xml_free);
  return xml == nullptr ? "" : std::string(xml, length);
}

}  // namespace platform::backend
