// Waits for the start and the end of a device's home screen.
#pragma once

#include "tool/device/device_folder.h"
#include "tool/support/time_limit.h"

namespace tool {

// Returns once the home screen has launched. Throws Failure if it has not at the timeout.
void awaitHost(const DeviceFolder& device, Seconds timeout);

// Stops the home screen and returns once it has ended. Throws Failure if none is running or it is
// still running at the timeout.
void stopHost(const DeviceFolder& device, Seconds timeout);

}  // namespace tool
