// Follows a home screen until the user interrupts.
#pragma once

#include "tool/device/host_connection.h"

namespace tool {

// Handles what arrives at the connection until SIGINT, SIGTERM or SIGHUP. Throws Failure if the
// home screen ends.
void followHost(HostConnection& host);

}  // namespace tool
