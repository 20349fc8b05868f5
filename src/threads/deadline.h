// How long a wait for another thread may take.
#pragma once

#include <chrono>

namespace lumora {

using Deadline = std::chrono::steady_clock::time_point;

// Five seconds from now, in real time.
Deadline deadlineFromNow();

// Negative once it has passed.
std::chrono::nanoseconds timeLeft(Deadline deadline);

}  // namespace lumora
