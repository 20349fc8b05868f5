// The system's one serial work queue: installations, removals, pauses and resumes run on it one
// after the other, in the order added.
#pragma once

#include <functional>

namespace lumora {

// Makes the queue, replacing one that exists. Main thread, at launch, before anyone adds to it.
void createTweakQueue();

// Any thread. Does nothing before createTweakQueue.
void addToTweakQueue(std::function<void()> block);

}  // namespace lumora
