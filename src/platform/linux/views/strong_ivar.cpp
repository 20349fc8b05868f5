#include "platform/linux/views/strong_ivar.h"

namespace platform::backend {

std::shared_ptr<UIView> StrongIvar::load() const {
  std::lock_guard lock(mutex_);
  return view_;
}

void StrongIvar::store(std::shared_ptr<UIView> view) {
  // The old view is destroyed after unlocking, because its dealloc may run any code.
  std::lock_guard lock(mutex_);
  view_.swap(view);
}

}  // namespace platform::backend
