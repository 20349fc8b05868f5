#include "platform/data.h"

#import "platform/ios/native_data.h"
#import "platform/ios/native_string.h"

namespace platform {

NSData::NSData(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}
NSData::~NSData() = default;

DataRef dataOfNative(::NSData* native) {
  if (native == nullptr) return nullptr;
  return std::make_shared<NSData>(
      std::make_unique<NSData::Impl>(NSData::Impl{Retained<::NSData>(native)}));
}

DataRef NSData::dataWithBytes(Bytes bytes) {
  return dataOfNative([::NSData dataWithBytes:bytes.data() length:bytes.size()]);
}

DataRef NSData::dataWithContentsOfFile(const std::string& path) {
  NSString* native = nativePath(path);
  if (native == nullptr) return nullptr;
  return dataOfNative([::NSData dataWithContentsOfFile:native
                                               options:NSDataReadingMappedIfSafe
                                                 error:nullptr]);
}

std::size_t NSData::length() const {
  return [impl_->native.get() length];
}

bool NSData::isEqualToData(const NSData& other) const {
  return [impl_->native.get() isEqualToData:other.impl_->native.get()];
}

bool NSData::writeToFileAtomically(const std::string& path) const {
  NSString* native = nativePath(path);
  return native != nullptr && [impl_->native.get() writeToFile:native atomically:YES];
}

}  // namespace platform
