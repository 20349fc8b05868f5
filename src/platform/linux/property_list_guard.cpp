#include "platform/linux/property_list_guard.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace platform {
namespace {

// A list of ours has two levels; other programs' values in it may have some more.
constexpr int deepestNesting = 64;

constexpr std::string_view binaryMagic = "bplist";

// Where the text goes on behind markup that holds no elements, such as a comment; 0 for an element.
std::size_t endOfNonElement(std::string_view markup) {
  constexpr std::pair<std::string_view, std::string_view> kinds[] = {
      {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  for (const auto& [start, end] : kinds) {
    if (markup.starts_with(start)) {
      return std::min(markup.find(end, start.size()), markup.size());
    }
  }
  return 0;
}

bool isFlatXml(std::string_view xml) {
  // The library's time grows with the square of the entities in a text.
  constexpr std::ptrdiff_t mostEntities = 50000;
  if (std::count(xml.begin(), xml.end(), '&') > mostEntities) return false;
  int depth = 0;
  for (auto at = xml.find('<'); at < xml.size(); at = xml.find('<', at + 1)) {
    const std::size_t skipped = endOfNonElement(xml.substr(at));
    at += skipped;
    if (skipped > 0) continue;
    const std::size_t end = xml.find('>', at);
    if (end == std::string_view::npos) return false;
    const std::string_view tag = xml.substr(at + 1, end - at - 1);
    // A type declaration with markup of its own is nothing that a writer of lists makes.
    if (tag.starts_with("!") && tag.find('[') != std::string_view::npos) return false;
    if (tag.starts_with("/array") || tag.starts_with("/dict")) --depth;
    const bool opens = tag.starts_with("array") || tag.starts_with("dict");
    if (opens && !tag.ends_with("/")) ++depth;
    if (depth > deepestNesting || depth < 0) return false;
  }
  return true;
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
      const std::uint64_t size = std::uint64_t{1} << (number(at, 1) & 0x3);
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

bool isHarmlessPropertyList(std::span<const std::uint8_t> bytes) {
  if (bytes.empty() || bytes.size() > largestPropertyList) return false;
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return text.starts_with(binaryMagic) ? BinaryList(bytes).isFlat() : isFlatXml(text);
}

}  // namespace platform
