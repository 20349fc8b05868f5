// What the host tells the rest of the process about its device: screen, orientation and kind, and
// the events of the default notification center. Main thread.
#pragma once

#include "platform/device.h"

namespace platform {

// In points; those of the upright device.
void setMainScreenBounds(CGRect bounds);
void setStatusBarOrientation(UIInterfaceOrientation orientation);
void setUserInterfaceIdiom(UIUserInterfaceIdiom idiom);

// Tells all observers of the name in the default notification center.
void postNotification(const char* name);

}  // namespace platform
