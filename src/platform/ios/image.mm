#include "platform/image.h"

#import "platform/ios/native_data.h"
#import "platform/ios/native_image.h"
#import "platform/ios/native_string.h"

namespace platform {

UIImage::UIImage(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}
UIImage::~UIImage() = default;

ImageRef imageOfNative(::UIImage* native) {
  if (native == nullptr) return nullptr;
  return std::make_shared<UIImage>(
      std::make_unique<UIImage::Impl>(UIImage::Impl{Retained<::UIImage>(native)}));
}

ImageRef imageOfBitmap(CGImageRef bitmap) {
  if (bitmap == nullptr) return nullptr;
  ImageRef image = imageOfNative([::UIImage imageWithCGImage:bitmap]);
  CGImageRelease(bitmap);
  return image;
}

int UIImage::width() const {
  return static_cast<int>(CGImageGetWidth([impl_->native.get() CGImage]));
}

int UIImage::height() const {
  return static_cast<int>(CGImageGetHeight([impl_->native.get() CGImage]));
}

ImageRef imageWithContentsOfFile(const std::string& path) {
  NSString* native = nativePath(path);
  return native == nullptr ? nullptr : imageOfNative([::UIImage imageWithContentsOfFile:native]);
}

DataRef UIImagePNGRepresentation(const UIImage& image) {
  return dataOfNative(::UIImagePNGRepresentation(image.impl().native.get()));
}

}  // namespace platform
