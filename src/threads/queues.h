// Adds blocks to the platform's queues. An exception ends a block silently. Any thread.
#pragma once

#include <functional>

#include "platform/operation_queue.h"

namespace lumora {

void addToQueue(platform::NSOperationQueue& queue, std::function<void()> block);
void addToMainQueue(std::function<void()> block);
// Runs the block on a background thread, at the same time as other such blocks.
void runInBackground(std::function<void()> block);

}  // namespace lumora
