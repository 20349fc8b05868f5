// The library's serial work queue, which runs installations, removals, pauses and resumes one after
// another, in the order in which they were added.
#pragma once

#include <functional>

namespace lumora {

// Creates the queue, replacing an old one. Main thread, at launch.
void createTweakQueue();

// Queues a block; an exception ends the block silently. Does nothing before createTweakQueue. Any
// thread.
void addToTweakQueue(std::function<void()> block);

}  // namespace lumora
