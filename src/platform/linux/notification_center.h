// The host's side of the default notification center. Main thread.
#pragma once

#include "platform/notification_center.h"

namespace platform::backend {

// Calls all observers of the name, in the order of their registration.
void postNotification(const char* name);

}  // namespace platform::backend
