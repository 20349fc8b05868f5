// The platform's object behind immutable bytes.
#pragma once

#import <Foundation/Foundation.h>

#include "platform/data.h"
#include "platform/ios/retained.h"

namespace platform {

struct NSData::Impl {
  Retained<::NSData> native;
};

// nullptr of nil.
DataRef dataOfNative(::NSData* native);

}  // namespace platform
