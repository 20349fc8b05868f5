// Access to the observers of a view, for tests and debugging.
#pragma once

#include <memory>
#include <vector>

#include "platform/view.h"

namespace platform::backend {

// Returns the observer of each registration, oldest first. Any thread.
std::vector<std::shared_ptr<KeyValueObserver>> observersOf(const UIView& view);

}  // namespace platform::backend
