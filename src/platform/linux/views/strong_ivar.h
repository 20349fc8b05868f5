// An instance variable of a host object that retains a view; it may be nullptr. Any thread.
#pragma once

#include <memory>
#include <mutex>

#include "platform/view.h"

namespace platform::backend {

class StrongIvar {
 public:
  std::shared_ptr<UIView> load() const;
  void store(std::shared_ptr<UIView> view);

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<UIView> view_;
};

}  // namespace platform::backend
