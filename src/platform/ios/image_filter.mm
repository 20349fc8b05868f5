#include "platform/image_filter.h"

#import <CoreImage/CoreImage.h>

#import "platform/ios/native_image.h"

namespace platform {
namespace {

// Returns a description of the blur, which is computed when it is rendered. Returns nil if there is
// no such filter.
::CIImage* blurred(const ImageRef& input, int radius) {
  CIFilter* filter = [CIFilter filterWithName:@"CIGaussianBlur"];
  [filter setDefaults];
  [filter setValue:[::CIImage imageWithCGImage:[input->impl().native.get() CGImage]]
            forKey:kCIInputImageKey];
  [filter setValue:[NSNumber numberWithInt:radius] forKey:kCIInputRadiusKey];
  return [filter outputImage];
}

}  // namespace

CIImage::CIImage(ImageRef input, int radius) : input_(std::move(input)), radius_(radius) {}

CIImage CIImage::gaussianBlur(const ImageRef& input, int radius) {
  return {input, radius};
}

CGRect CIImage::extent() const {
  ::CIImage* output = blurred(input_, radius_);
  if (output == nullptr) return {};
  const ::CGRect extent = [output extent];
  return {extent.origin.x, extent.origin.y, extent.size.width, extent.size.height};
}

ImageRef CIImage::render(CGRect rectangle) const {
  ::CIImage* output = blurred(input_, radius_);
  if (output == nullptr) return nullptr;
  CIContext* context = [CIContext contextWithOptions:nullptr];
  const ::CGRect part = {{rectangle.x, rectangle.y}, {rectangle.width, rectangle.height}};
  return imageOfBitmap([context createCGImage:output fromRect:part]);
}

}  // namespace platform
