// The native object of an NSData.
#pragma once

#import <Foundation/Foundation.h>

#include "platform/data.h"
#include "platform/ios/retained.h"

namespace platform {

struct NSData::Impl {
  Retained<::NSData> native;
};

// Returns the object, which it retains, as data, or nullptr for nil.
DataRef dataOfNative(::NSData* native);

}  // namespace platform
