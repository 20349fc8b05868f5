// Counts the blocks that operation queues hold or run, so that someone who drives the clock by hand
// knows when the process has come to rest. Any thread.
#pragma once

namespace platform {

// Blocks on background queues that are not finished.
int pendingBackgroundOperations();

}  // namespace platform
