// The default notification center of the process, by which the host tells of device events. Main
// thread.
#pragma once

#include "platform/objc_runtime.h"

namespace platform {

// Sends observer the message selector, with the notification as its argument, whenever name is
// posted by anyone. observer is not retained.
void NSNotificationCenter_addObserver(id observer, SEL selector, const char* name);

}  // namespace platform
