// Lets background threads run code on the main queue, for a limited wait.
#pragma once

#include <functional>

#include "threads/deadline.h"

namespace lumora {

// Runs the block on the main queue and waits until it has finished or the deadline has passed. An
// exception ends the block silently. The block still runs after the deadline, so it must own
// everything it uses. Not on the main thread.
void hopToMainQueue(std::function<void()> block, Deadline deadline);

}  // namespace lumora
