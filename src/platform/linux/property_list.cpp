#include "platform/property_list.h"

#include <algorithm>
#include <span>
#include <string_view>

#include <plist/plist.h>

#include "platform/linux/file_contents.h"
#include "platform/linux/property_list_guard.h"

namespace platform {
namespace {

struct FreePlist {
  void operator()(plist_t node) const { plist_free(node); }
};
using PlistPointer = std::unique_ptr<void, FreePlist>;

// Editors put the mark before UTF-8; the library takes it for the start of something else.
std::span<const std::uint8_t> withoutByteOrderMark(std::span<const std::uint8_t> text) {
  constexpr std::uint8_t mark[] = {0xEF, 0xBB, 0xBF};
  const bool marked =
      text.size() >= std::size(mark) && std::equal(std::begin(mark), std::end(mark), text.begin());
  return marked ? text.subspan(std::size(mark)) : text;
}

PlistPointer read(const std::string& path) {
  const auto contents = contentsOfFile(path, largestPropertyList);
  if (!contents) return nullptr;
  const std::span<const std::uint8_t> list = withoutByteOrderMark(*contents);
  if (!isHarmlessPropertyList(list)) return nullptr;
  plist_t node = nullptr;
  const auto parse = isBinaryPropertyList(list) ? plist_from_bin : plist_from_xml;
  parse(reinterpret_cast<const char*>(list.data()), static_cast<std::uint32_t>(list.size()), &node);
  return PlistPointer(node);
}

// Characters that XML has no place for would make the whole file unreadable to other programs.
Bytes writable(std::string_view xml) {
  Bytes bytes(xml.begin(), xml.end());
  std::erase_if(bytes,
                [](std::uint8_t c) { return c < ' ' && c != '\t' && c != '\n' && c != '\r'; });
  return bytes;
}

bool write(plist_t node, const std::string& path) {
  char* xml = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(node, &xml, &length);
  if (xml == nullptr) return false;
  const Bytes list = writable({xml, length});
  plist_to_xml_free(xml);
  // What could not be read again would lose everything that is in the file now.
  return isHarmlessPropertyList(list) && writeToFileAtomically(list, path);
}

std::optional<std::string> text(plist_t node) {
  if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) return std::nullopt;
  std::uint64_t length = 0;
  const char* characters = plist_get_string_ptr(node, &length);
  return std::string(characters, length);
}

}  // namespace

struct NSMutableDictionary::Impl {
  PlistPointer root;
};

NSMutableDictionary::NSMutableDictionary()
    : NSMutableDictionary(std::make_unique<Impl>(Impl{PlistPointer(plist_new_dict())})) {}
NSMutableDictionary::NSMutableDictionary(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
NSMutableDictionary::~NSMutableDictionary() = default;
NSMutableDictionary::NSMutableDictionary(NSMutableDictionary&&) noexcept = default;
NSMutableDictionary& NSMutableDictionary::operator=(NSMutableDictionary&&) noexcept = default;

std::optional<NSMutableDictionary> NSMutableDictionary::dictionaryWithContentsOfFile(
    const std::string& path) {
  PlistPointer root = read(path);
  if (!root || plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;
  return NSMutableDictionary(std::make_unique<Impl>(Impl{std::move(root)}));
}

bool NSMutableDictionary::writeToFile(const std::string& path) const {
  return write(impl_->root.get(), path);
}

std::optional<std::string> NSMutableDictionary::stringForKey(const std::string& key) const {
  return text(plist_dict_get_item(impl_->root.get(), key.c_str()));
}

void NSMutableDictionary::setString(const std::string& value, const std::string& key) {
  plist_dict_set_item(impl_->root.get(), key.c_str(), plist_new_string(value.c_str()));
}

std::optional<std::vector<std::string>> arrayWithContentsOfFile(const std::string& path) {
  PlistPointer root = read(path);
  if (!root || plist_get_node_type(root.get()) != PLIST_ARRAY) return std::nullopt;
  std::vector<std::string> array(plist_array_get_size(root.get()));
  for (std::uint32_t index = 0; index < array.size(); ++index) {
    array[index] = text(plist_array_get_item(root.get(), index)).value_or("");
  }
  return array;
}

bool writeArrayToFile(const std::vector<std::string>& array, const std::string& path) {
  PlistPointer root(plist_new_array());
  for (const std::string& element : array) {
    plist_array_append_item(root.get(), plist_new_string(element.c_str()));
  }
  return write(root.get(), path);
}

}  // namespace platform
