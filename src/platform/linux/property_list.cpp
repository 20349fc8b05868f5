#include "platform/property_list.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

#include "platform/linux/file_contents.h"
#include "platform/linux/out_of_memory.h"
#include "platform/linux/property_list_binary.h"
#include "platform/linux/property_list_xml.h"

namespace platform {
namespace {

// Many times the settings of this system, whatever other programs store beside them.
constexpr std::size_t largestDictionary = std::size_t{1} << 21;
// More than the list with the delays of half a million frames.
constexpr std::size_t largestArray = std::size_t{1} << 24;

// The files that were too large, or too costly, when they were read last. They are not replaced: what
// is in them cannot be kept, but is not damaged either.
class Refused {
 public:
  static Refused& files() {
    static auto* refused = new Refused;
    return *refused;
  }

  void note(const std::string& path, bool isRefused) {
    std::lock_guard lock(mutex_);
    if (isRefused) {
      paths_.insert(path);
    } else {
      paths_.erase(path);
    }
  }

  bool has(const std::string& path) {
    std::lock_guard lock(mutex_);
    return paths_.count(path) > 0;
  }

 private:
  std::mutex mutex_;
  std::set<std::string> paths_;
};

struct Reading {
  bool isRefused = false;
  std::optional<PropertyListContents> list;
};

Reading readList(const OpenFile& file) {
  Bytes contents(file.size);
  contents.resize(readAt(file.descriptor, 0, contents));
  if (!isBinaryPropertyList(contents)) return {false, parsePropertyListXml(contents)};
  if (costOfBinaryPropertyList(contents) == PropertyListCost::TooHigh) return {true, {}};
  const std::string xml = validXml(xmlOfBinaryPropertyList(contents));
  return {false, parsePropertyListXml({reinterpret_cast<const std::uint8_t*>(xml.data()), xml.size()})};
}

std::optional<PropertyListContents> read(const std::string& path, std::size_t largest) {
  const auto file = openFile(path, SIZE_MAX);
  Reading reading;
  if (file) {
    // Without enough memory the list counts as refused, too.
    reading.isRefused = true;
    if (file->size <= largest) {
      reading = unlessOutOfMemory([&file] { return std::optional(readList(*file)); })
                    .value_or(std::move(reading));
    }
  }
  Refused::files().note(path, reading.isRefused);
  return std::move(reading.list);
}

bool write(const PropertyListContents& list, const std::string& path, std::size_t largest) {
  const std::string xml = propertyListXml(list);
  // What could not be read again would lose everything that is in the file now.
  if (xml.size() > largest || Refused::files().has(path)) return false;
  return writeToFileAtomically(Bytes(xml.begin(), xml.end()), path);
}

}  // namespace

struct NSMutableDictionary::Impl {
  PropertyListContents list;

  // Of several entries with one key the last counts.
  PropertyListValue* find(const std::string& key) {
    const auto at = std::find_if(list.entries.rbegin(), list.entries.rend(),
                                 [&key](const auto& entry) { return entry.key == key; });
    return at == list.entries.rend() ? nullptr : &at->value;
  }
};

NSMutableDictionary::NSMutableDictionary()
    : NSMutableDictionary(std::make_unique<Impl>(Impl{{true, {}}})) {}
NSMutableDictionary::NSMutableDictionary(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
NSMutableDictionary::~NSMutableDictionary() = default;
NSMutableDictionary::NSMutableDictionary(NSMutableDictionary&&) noexcept = default;
NSMutableDictionary& NSMutableDictionary::operator=(NSMutableDictionary&&) noexcept = default;

std::optional<NSMutableDictionary> NSMutableDictionary::dictionaryWithContentsOfFile(
    const std::string& path) {
  auto list = read(path, largestDictionary);
  if (!list || !list->isDictionary) return std::nullopt;
  return NSMutableDictionary(std::make_unique<Impl>(Impl{std::move(*list)}));
}

bool NSMutableDictionary::writeToFile(const std::string& path) const {
  return write(impl_->list, path, largestDictionary);
}

std::optional<std::string> NSMutableDictionary::stringForKey(const std::string& key) const {
  const PropertyListValue* value = impl_->find(key);
  if (value == nullptr || !value->isString) return std::nullopt;
  return value->content;
}

void NSMutableDictionary::setString(const std::string& text, const std::string& key) {
  const PropertyListValue value{true, text};
  if (PropertyListValue* old = impl_->find(key)) {
    *old = value;
  } else {
    impl_->list.entries.push_back({key, value});
  }
}

std::optional<std::vector<std::string>> arrayWithContentsOfFile(const std::string& path) {
  const auto list = read(path, largestArray);
  if (!list || list->isDictionary) return std::nullopt;
  std::vector<std::string> array;
  for (const auto& [key, value] : list->entries) array.push_back(value.isString ? value.content : "");
  return array;
}

bool writeArrayToFile(const std::vector<std::string>& array, const std::string& path) {
  PropertyListContents list;
  for (const std::string& element : array) list.entries.push_back({"", {true, element}});
  return write(list, path, largestArray);
}

}  // namespace platform
