// Counts pending and past work, so that a program that controls the process can wait until it is
// idle. Any thread.
#pragma once

#include <cstdint>

namespace platform::backend {

// A block on a background queue is pending from when it is added until it has finished.
void beginBackgroundOperation();
void endBackgroundOperation();
int pendingBackgroundOperations();

// activityCount grows with every block that is added to any queue.
void noteActivity();
std::uint64_t activityCount();

}  // namespace platform::backend
