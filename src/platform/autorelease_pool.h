// Releases the platform's temporary objects early: those created during the pool's lifetime are
// released when the pool is destroyed, not at the end of the run loop's turn. Requires destruction
// on the creating thread, newest pool first. Never fails; does nothing on Linux, where the platform
// has no temporary objects.
#pragma once

namespace platform {

class NSAutoreleasePool {
 public:
  NSAutoreleasePool();
  ~NSAutoreleasePool();
  NSAutoreleasePool(const NSAutoreleasePool&) = delete;
  NSAutoreleasePool& operator=(const NSAutoreleasePool&) = delete;

 private:
  // The platform's pool; nullptr on a platform without one.
  [[maybe_unused]] void* pool_;
};

}  // namespace platform
