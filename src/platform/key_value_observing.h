// Key-value observing of a view's "hidden", and the platform's exceptions around it. Observers are
// called on the thread that changed the value.
#pragma once

#include <functional>
#include <string_view>

namespace platform {

class UIView;

// Retained by every registration until that is removed or the observed view dies.
class KeyValueObserver {
 public:
  virtual ~KeyValueObserver() = default;
  virtual void observeValueForKeyPath(std::string_view keyPath, UIView& object,
                                      const void* context) = 0;
};

// Runs the block; false if it raised an exception of the platform's class, which is swallowed.
// Exceptions of any other kind pass through.
bool swallowingNSException(const std::function<void()>& block);

}  // namespace platform
