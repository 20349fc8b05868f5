// Sets what platform/device.h returns to the library. Any thread.
#pragma once

#include "platform/device.h"

namespace platform::backend {

// Sets the bounds in points, as in portrait orientation.
void setMainScreenBounds(CGRect bounds);
void setStatusBarOrientation(UIInterfaceOrientation orientation);
void setUserInterfaceIdiom(UIUserInterfaceIdiom idiom);

}  // namespace platform::backend
