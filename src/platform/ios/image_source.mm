#include "platform/image_source.h"

#import <ImageIO/ImageIO.h>

#import "platform/ios/native_data.h"
#import "platform/ios/native_image.h"

namespace platform {
namespace {

std::optional<double> numberIn(NSDictionary* dictionary, CFStringRef key) {
  ::id value = [dictionary objectForKey:(NSString*)key];
  if (![value respondsToSelector:@selector(doubleValue)]) return std::nullopt;
  return [value doubleValue];
}

}  // namespace

struct CGImageSource::Impl {
  explicit Impl(CGImageSourceRef native) : source(native) {}
  ~Impl() { CFRelease(source); }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  const CGImageSourceRef source;
};

CGImageSource::CGImageSource(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
CGImageSource::~CGImageSource() = default;

std::unique_ptr<CGImageSource> CGImageSource::createWithData(const DataRef& data) {
  CGImageSourceRef source =
      CGImageSourceCreateWithData((CFDataRef)data->impl().native.get(), nullptr);
  if (source == nullptr) return nullptr;
  // There may be a source even if the bytes are not an image file.
  if (CGImageSourceGetCount(source) == 0) {
    CFRelease(source);
    return nullptr;
  }
  return std::unique_ptr<CGImageSource>(new CGImageSource(std::make_unique<Impl>(source)));
}

int CGImageSource::count() const {
  return static_cast<int>(CGImageSourceGetCount(impl_->source));
}

ImageRef CGImageSource::createImageAtIndex(int index) {
  if (index < 0 || index >= count()) return nullptr;
  return imageOfBitmap(
      CGImageSourceCreateImageAtIndex(impl_->source, static_cast<size_t>(index), nullptr));
}

std::optional<ImageProperties> CGImageSource::copyPropertiesAtIndex(int index) const {
  if (index < 0 || index >= count()) return std::nullopt;
  NSDictionary* properties = [(NSDictionary*)CGImageSourceCopyPropertiesAtIndex(
      impl_->source, static_cast<size_t>(index), nullptr) autorelease];
  if (properties == nullptr) return std::nullopt;
  ::id gif = [properties objectForKey:(NSString*)kCGImagePropertyGIFDictionary];
  if (![gif isKindOfClass:[NSDictionary class]]) return ImageProperties();
  return ImageProperties{GIFProperties{numberIn(gif, kCGImagePropertyGIFUnclampedDelayTime),
                                       numberIn(gif, kCGImagePropertyGIFDelayTime)}};
}

}  // namespace platform
