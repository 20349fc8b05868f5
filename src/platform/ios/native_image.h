// The platform's object behind a picture.
#pragma once

#import <UIKit/UIKit.h>

#include "platform/image.h"
#include "platform/ios/retained.h"

namespace platform {

struct UIImage::Impl {
  Retained<::UIImage> native;
};

// nullptr of nil.
ImageRef imageOfNative(::UIImage* native);
// Lets go of the bitmap, which may be NULL.
ImageRef imageOfBitmap(CGImageRef bitmap);

}  // namespace platform
