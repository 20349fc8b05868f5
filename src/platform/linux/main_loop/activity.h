// What the process is busy with, so that someone who drives it from outside knows when it has come
// to rest. Any thread.
#pragma once

#include <cstdint>

namespace platform::backend {

// Counts a block on the background queues from when it is added until it has finished.
void beginBackgroundOperation();
void endBackgroundOperation();
int pendingBackgroundOperations();

// A number that grows with every block that is added to any queue.
void noteActivity();
std::uint64_t activityCount();

}  // namespace platform::backend
