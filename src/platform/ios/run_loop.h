// The main run loop, for programs that wait for notifications. Main thread.
#pragma once

namespace platform::backend {

// Handles what arrives at the main run loop. Returns after something has been handled, or after the
// time.
void runMainLoop(double seconds);

}  // namespace platform::backend
