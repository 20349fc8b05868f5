// The observers of a view, for tests and debuggers. Any thread.
#pragma once

#include <memory>
#include <vector>

#include "platform/view.h"

namespace platform::backend {

// Oldest first.
std::vector<std::shared_ptr<KeyValueObserver>> observersOf(const UIView& view);

}  // namespace platform::backend
