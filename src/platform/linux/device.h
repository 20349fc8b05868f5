// The device as the host describes it to the library: screen, orientation and kind. Main thread.
#pragma once

#include "platform/device.h"

namespace platform::backend {

// In points; those of the upright device.
void setMainScreenBounds(CGRect bounds);
void setStatusBarOrientation(UIInterfaceOrientation orientation);
void setUserInterfaceIdiom(UIUserInterfaceIdiom idiom);

}  // namespace platform::backend
