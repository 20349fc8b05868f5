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
  return dataOfNative([::NSData dataWithContentsOfFile:nativeString(path)]);
}

std::size_t NSData::length() const {
  return [impl_->native.get() length];
}

bool NSData::isEqualToData(const NSData& other) const {
  return [impl_->native.get() isEqualToData:other.impl_->native.get()];
}

bool NSData::writeToFileAtomically(const std::string& path) const {
  return [impl_->native.get() writeToFile:nativeString(path) atomically:YES];
}

}  // namespace platform
