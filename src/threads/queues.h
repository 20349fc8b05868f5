// How the library adds its blocks to the platform's queues: whatever a block throws ends the block,
// and nothing more. Any thread.
#pragma once

#include <functional>

#include "platform/operation_queue.h"

namespace lumora {

void addToQueue(platform::NSOperationQueue& queue, std::function<void()> block);
void addToMainQueue(std::function<void()> block);
// On a queue of its own.
void runInBackground(std::function<void()> block);

}  // namespace lumora
