// The host's side of platform/notification_center.h. Main thread.
#pragma once

#include "platform/notification_center.h"

namespace platform::backend {

// Calls all observers of the name in the order of their registration, with nil as the notification.
// Exceptions of an observer pass through.
void postNotification(const char* name);

}  // namespace platform::backend
