// All observers of a view, for those who look into the process.
#pragma once

#include <memory>
#include <vector>

#include "platform/view.h"

namespace platform {

// Oldest first. Any thread.
std::vector<std::shared_ptr<KeyValueObserver>> observersOf(const UIView& view);

}  // namespace platform
