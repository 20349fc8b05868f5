#include "platform/property_list.h"

#import "platform/ios/native_string.h"
#include "platform/ios/retained.h"

namespace platform {
namespace {

// Returns the text of a string, or nothing for any other value.
std::optional<std::string> textOf(::id value) {
  if (![value isKindOfClass:[::NSString class]]) return std::nullopt;
  return standardString(value);
}

}  // namespace

struct NSMutableDictionary::Impl {
  Retained<::NSMutableDictionary> native;
};

NSMutableDictionary::NSMutableDictionary()
    : NSMutableDictionary(std::make_unique<Impl>(
          Impl{Retained<::NSMutableDictionary>([::NSMutableDictionary dictionary])})) {}
NSMutableDictionary::NSMutableDictionary(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
NSMutableDictionary::~NSMutableDictionary() = default;
NSMutableDictionary::NSMutableDictionary(NSMutableDictionary&&) noexcept = default;
NSMutableDictionary& NSMutableDictionary::operator=(NSMutableDictionary&&) noexcept = default;

std::optional<NSMutableDictionary> NSMutableDictionary::dictionaryWithContentsOfFile(
    const std::string& path) {
  NSString* file = nativePath(path);
  ::NSMutableDictionary* native =
      file == nullptr ? nullptr : [::NSMutableDictionary dictionaryWithContentsOfFile:file];
  if (native == nullptr) return std::nullopt;
  return NSMutableDictionary(std::make_unique<Impl>(Impl{Retained<::NSMutableDictionary>(native)}));
}

bool NSMutableDictionary::writeToFile(const std::string& path) const {
  NSString* file = nativePath(path);
  return file != nullptr && [impl_->native.get() writeToFile:file atomically:YES];
}

std::optional<std::string> NSMutableDictionary::stringForKey(const std::string& key) const {
  return textOf([impl_->native.get() objectForKey:nativeString(key)]);
}

void NSMutableDictionary::setString(const std::string& value, const std::string& key) {
  [impl_->native.get() setObject:nativeString(value) forKey:nativeString(key)];
}

std::optional<std::vector<std::string>> arrayWithContentsOfFile(const std::string& path) {
  NSString* file = nativePath(path);
  NSArray* native = file == nullptr ? nullptr : [NSArray arrayWithContentsOfFile:file];
  if (native == nullptr) return std::nullopt;
  std::vector<std::string> array;
  const NSUInteger count = [native count];
  for (NSUInteger index = 0; index < count; ++index) {
    array.push_back(textOf([native objectAtIndex:index]).value_or(""));
  }
  return array;
}

bool writeArrayToFile(const std::vector<std::string>& array, const std::string& path) {
  NSString* file = nativePath(path);
  if (file == nullptr) return false;
  NSMutableArray* native = [NSMutableArray array];
  for (const std::string& element : array) [native addObject:nativeString(element)];
  return [native writeToFile:file atomically:YES];
}

}  // namespace platform
