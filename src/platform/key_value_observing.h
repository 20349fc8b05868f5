// Observation of a view's "hidden", and the exceptions that the platform raises around it.
#pragma once

#include <functional>
#include <string_view>

namespace platform {

class UIView;

// Retained by each of its registrations until that is removed. A registration that is still there
// when the view is destroyed ends with the view on Linux, and keeps the observer for good on a
// device.
class KeyValueObserver {
 public:
  virtual ~KeyValueObserver() = default;
  // Called after the value was set, on the thread that set it. object is valid during the call.
  // Must not throw.
  virtual void observeValueForKeyPath(std::string_view keyPath, UIView& object,
                                      const void* context) = 0;
};

// Runs the block on the calling thread. Returns false if the block raised an NSException, which is
// dropped. Exceptions of all other classes pass through.
bool swallowingNSException(const std::function<void()>& block);

}  // namespace platform
