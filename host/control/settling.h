// Waits until the process is idle. Main thread, outside of all blocks and handlers.
#pragma once

#include <chrono>

namespace host {

// Turns the run loop until the main queue and all background queues are empty and every bus message
// sent so far has been handled. Returns false if the limit passes first or the loop is stopped.
bool settle(std::chrono::steady_clock::time_point limit);

}  // namespace host
