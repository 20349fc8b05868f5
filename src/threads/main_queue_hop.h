// How background work touches views: on the main queue, and waiting for it only so long.
#pragma once

#include <functional>

#include "threads/deadline.h"

namespace lumora {

// Runs the block on the main queue and waits until the deadline for its end, which may be by an
// exception. The block runs late if the deadline passes first, so it must own what it touches. Not
// to be called on the main thread.
void hopToMainQueue(std::function<void()> block, Deadline deadline);

}  // namespace lumora
