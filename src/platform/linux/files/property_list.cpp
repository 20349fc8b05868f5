#include "platform/property_list.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <set>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"
#include "platform/linux/files/property_list_binary.h"
#include "platform/linux/files/property_list_xml.h"
#include "platform/linux/files/write_lock.h"

namespace platform {
using namespace backend;

namespace {

// Many times the size of the settings, whatever else other programs store in them.
constexpr std::size_t maxDictionarySize = std::size_t{1} << 21;
// More than the delays of half a million frames take.
constexpr std::size_t maxArraySize = std::size_t{1} << 24;

// The files that were too large or too costly when they were last read. They must not be replaced,
// because they are not damaged and their contents would be lost.
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

// Identifies the file that was read. It changes with every replacement and most writes in place.
struct Stamp {
  dev_t device = 0;
  ino_t file = 0;
  off_t size = 0;
  time_t seconds = 0;
  long nanoseconds = 0;
  friend bool operator==(const Stamp&, const Stamp&) = default;
};

Stamp stampOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

// Returns an empty stamp if there is no file.
Stamp stampOfFile(const std::string& path) {
  const auto item = findItem(path);
  struct stat status {};
  const bool exists =
      item && fstatat(item->directory.get(), item->name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
  return exists ? stampOf(status) : Stamp();
}

struct Reading {
  std::optional<PropertyListContents> list;
  Stamp stamp;
  bool isRefused = false;
};

// Returns nothing if the list is damaged.
std::optional<PropertyListContents> parse(const Bytes& contents) {
  if (!isBinaryPropertyList(contents)) return parsePropertyListXml(contents);
  const std::string xml = validXml(xmlOfBinaryPropertyList(contents));
  return parsePropertyListXml({reinterpret_cast<const std::uint8_t*>(xml.data()), xml.size()});
}

bool isTooCostly(const Bytes& contents) {
  return isBinaryPropertyList(contents) &&
         costOfBinaryPropertyList(contents) == PropertyListCost::TooHigh;
}

// A list for which memory runs out is refused, too.
Reading read(const std::string& path, std::size_t maxSize) {
  Reading reading;
  if (const auto file = openFile(path, SIZE_MAX)) {
    struct stat status {};
    if (fstat(file->descriptor.get(), &status) == 0) reading.stamp = stampOf(status);
    const auto contents = file->size <= maxSize ? contentsOf(*file) : std::nullopt;
    reading.isRefused = !contents || isTooCostly(*contents);
    if (!reading.isRefused) {
      try {
        reading.list = parse(*contents);
      } catch (const std::bad_alloc&) {
        reading.isRefused = true;
      }
    }
  }
  Refused::files().note(path, reading.isRefused);
  return reading;
}

bool write(const PropertyListContents& list, const std::string& path, std::size_t maxSize,
           Durability durability) {
  const std::string xml = propertyListXml(list);
  // A list that is too large to be read again must not replace one that can be read.
  if (xml.size() > maxSize || Refused::files().has(path)) return false;
  return writeToFileAtomically(Bytes(xml.begin(), xml.end()), path, durability);
}

// Returns the value of the last entry with this key, or nullptr if there is none.
PropertyListValue* find(PropertyListContents& list, const std::string& key) {
  const auto at = std::find_if(list.entries.rbegin(), list.entries.rend(),
                               [&key](const auto& entry) { return entry.key == key; });
  return at == list.entries.rend() ? nullptr : &at->value;
}

void set(PropertyListContents& list, const PropertyListEntry& entry) {
  if (PropertyListValue* old = find(list, entry.key)) {
    *old = entry.value;
  } else {
    list.entries.push_back(entry);
  }
}

}  // namespace

struct NSMutableDictionary::Impl {
  PropertyListContents list{true, {}};
  Stamp stamp;
  std::vector<PropertyListEntry> changes;
};

NSMutableDictionary::NSMutableDictionary() : NSMutableDictionary(std::make_unique<Impl>()) {}
NSMutableDictionary::NSMutableDictionary(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
NSMutableDictionary::~NSMutableDictionary() = default;
NSMutableDictionary::NSMutableDictionary(NSMutableDictionary&&) noexcept = default;
NSMutableDictionary& NSMutableDictionary::operator=(NSMutableDictionary&&) noexcept = default;

std::optional<NSMutableDictionary> NSMutableDictionary::dictionaryWithContentsOfFile(
    const std::string& path) {
  Reading reading = read(path, maxDictionarySize);
  if (!reading.list || !reading.list->isDictionary) return std::nullopt;
  return NSMutableDictionary(
      std::make_unique<Impl>(Impl{std::move(*reading.list), reading.stamp, {}}));
}

// If another process or thread has written the file since this list was read, only the keys that
// were set here are changed in it, so that overlapping writers lose nothing.
bool NSMutableDictionary::writeToFile(const std::string& path) const {
  const WriteLock lock;
  if (stampOfFile(path) == impl_->stamp) {
    return write(impl_->list, path, maxDictionarySize, Durability::Durable);
  }
  Reading now = read(path, maxDictionarySize);
  if (!now.list || !now.list->isDictionary) now.list = impl_->list;
  for (const PropertyListEntry& change : impl_->changes) set(*now.list, change);
  return write(*now.list, path, maxDictionarySize, Durability::Durable);
}

std::optional<std::string> NSMutableDictionary::stringForKey(const std::string& key) const {
  const PropertyListValue* value = find(impl_->list, key);
  if (value == nullptr || !value->isString) return std::nullopt;
  return value->content;
}

void NSMutableDictionary::setString(const std::string& text, const std::string& key) {
  impl_->changes.push_back({key, {true, text}});
  set(impl_->list, impl_->changes.back());
}

std::optional<std::vector<std::string>> arrayWithContentsOfFile(const std::string& path) {
  const auto list = read(path, maxArraySize).list;
  if (!list || list->isDictionary) return std::nullopt;
  std::vector<std::string> array;
  for (const auto& [key, value] : list->entries)
    array.push_back(value.isString ? value.content : "");
  return array;
}

bool writeArrayToFile(const std::vector<std::string>& array, const std::string& path) {
  PropertyListContents list;
  for (const std::string& element : array) list.entries.push_back({"", {true, element}});
  return write(list, path, maxArraySize, Durability::Cached);
}

}  // namespace platform
