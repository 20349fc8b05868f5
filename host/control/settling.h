// Waits until the process has come to rest. Main thread, outside all blocks and handlers.
#pragma once

#include <chrono>

namespace host {

// Turns the run loop until the main queue and all background queues are empty and every bus message
// sent so far has been handled; false if the limit passes first or the loop is stopped.
bool settle(std::chrono::steady_clock::time_point limit);

}  // namespace host
