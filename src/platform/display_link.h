// A timer bound to the display's refresh. Main thread, but for invalidate, which works on any. The
// run loop retains a link from addToMainRunLoop until it is invalidated.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

class CADisplayLink {
 public:
  using Target = std::function<void(const CADisplayLink&)>;

  static std::shared_ptr<CADisplayLink> displayLinkWithTarget(Target target);
  ~CADisplayLink();

  // Refreshes from one call of the target to the next; 1 is every refresh.
  void setFrameInterval(int refreshes);
  // In the common modes: it goes on firing while the user scrolls or touches.
  void addToMainRunLoop();
  void invalidate();
  // The nominal time between two refreshes, not a measured one.
  std::chrono::duration<double> duration() const;

 private:
  struct Impl;
  explicit CADisplayLink(std::shared_ptr<Impl> impl);
  std::shared_ptr<Impl> impl_;
};

}  // namespace platform
