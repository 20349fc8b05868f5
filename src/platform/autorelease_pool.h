// While it lives, what the platform hands out temporarily is let go of at its end, not at the end
// of the run loop's turn. To be destroyed on the thread that made it.
#pragma once

namespace platform {

class NSAutoreleasePool {
 public:
  NSAutoreleasePool();
  ~NSAutoreleasePool();
  NSAutoreleasePool(const NSAutoreleasePool&) = delete;
  NSAutoreleasePool& operator=(const NSAutoreleasePool&) = delete;

 private:
  [[maybe_unused]] void* pool_;
};

}  // namespace platform
