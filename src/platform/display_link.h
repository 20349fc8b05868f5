// A timer that fires with the display's refreshes. Main thread, except for invalidate, which works
// on any thread. The run loop retains a link from addToMainRunLoop until it is invalidated, even if
// every other reference to it is gone.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

class CADisplayLink {
 public:
  using Target = std::function<void(const CADisplayLink&)>;

  // Returns a link that does not fire yet, never nullptr. The link owns target, which must not
  // throw.
  static std::shared_ptr<CADisplayLink> displayLinkWithTarget(Target target);
  ~CADisplayLink();

  // Sets how many refreshes pass from one call of the target to the next. Requires at least 1,
  // which means every refresh.
  void setFrameInterval(int refreshes);
  // Starts firing on the main thread, in the common modes: also while the user scrolls or touches.
  // Requires a link that has not been invalidated.
  void addToMainRunLoop();
  // Allows the link to leave out this number of the next calls of the target, to save power. It may
  // leave out fewer, and it leaves out none after other work of the main thread. Within the target;
  // requires a frame interval of 1.
  void skipRefreshes(int count) const;
  // Returns how many calls were left out, as skipRefreshes allowed, just before this one. Within
  // the target.
  int skippedRefreshes() const;
  // Stops the link for good; does nothing if it is stopped. A call of the target that the main
  // thread has begun may still be running when this returns on another thread.
  void invalidate();
  // Returns the nominal time between two refreshes, not a measured one. It may be 0 on a device
  // before the first call of the target and after invalidate.
  std::chrono::duration<double> duration() const;

 private:
  struct Impl;
  explicit CADisplayLink(std::shared_ptr<Impl> impl);
  std::shared_ptr<Impl> impl_;
};

}  // namespace platform
