// Deadlines for waiting for another thread. Any thread.
#pragma once

#include <chrono>

namespace lumora {

using Deadline = std::chrono::steady_clock::time_point;

// Returns the time five seconds from now.
Deadline deadlineFromNow();

// Returns the time until the deadline, negative once it has passed.
std::chrono::nanoseconds timeLeft(Deadline deadline);

}  // namespace lumora
