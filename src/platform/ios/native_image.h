// The native object of a UIImage.
#pragma once

#import <UIKit/UIKit.h>

#include "platform/image.h"
#include "platform/ios/retained.h"

namespace platform {

struct UIImage::Impl {
  Retained<::UIImage> native;
};

// Returns the object, which it retains, as an image, or nullptr for nil.
ImageRef imageOfNative(::UIImage* native);
// Returns the bitmap, which it releases, as an image, or nullptr for NULL.
ImageRef imageOfBitmap(CGImageRef bitmap);

}  // namespace platform
