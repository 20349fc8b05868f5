// The options of the last run on a desktop, for the next login.
#pragma once

#include "host/options/host_options.h"
#include "tool/device/device_folder.h"

namespace tool {

// Throws Failure if they cannot be stored.
void storeLastDesktop(const DeviceFolder& device, const host::HostOptions& options);

// Returns the stored options, or the usual ones of a desktop if there are none that can be used.
host::HostOptions lastDesktop(const DeviceFolder& device);

}  // namespace tool
