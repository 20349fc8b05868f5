// The process's default notification center, through which the host reports device events. Main
// thread.
#pragma once

#include "platform/objc_runtime.h"

namespace platform {

// Sends observer the message selector whenever name is posted, with the notification as its
// argument, which is nil on Linux. Requires an observer that has this method and lives as long as
// the process, because it is not retained and cannot be removed. Never fails.
void NSNotificationCenter_addObserver(id observer, SEL selector, const char* name);

}  // namespace platform
