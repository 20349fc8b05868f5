#include "platform/display_link.h"

#include <atomic>
#include <utility>

#include "platform/linux/main_loop/display_clock.h"

namespace platform {
using namespace backend;

struct CADisplayLink::Impl : DisplayClock::Link {
  Target target;
  int interval = 1;
  int refreshesToGo = 1;
  int mayBeSkipped = 0;
  int skipped = 0;
  std::atomic<bool> valid = true;
  std::weak_ptr<Impl> self;

  int skippable() const override { return mayBeSkipped; }
  void endSkipping() override { mayBeSkipped = 0; }

  void refresh(int passed) override {
    mayBeSkipped = 0;
    refreshesToGo -= passed;
    if (!valid || refreshesToGo > 0) return;
    refreshesToGo = interval;
    skipped = passed - 1;
    target(CADisplayLink(self.lock()));
  }
};

CADisplayLink::CADisplayLink(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}
CADisplayLink::~CADisplayLink() = default;

std::shared_ptr<CADisplayLink> CADisplayLink::displayLinkWithTarget(Target target) {
  auto impl = std::make_shared<Impl>();
  impl->target = std::move(target);
  impl->self = impl;
  return std::shared_ptr<CADisplayLink>(new CADisplayLink(std::move(impl)));
}

void CADisplayLink::setFrameInterval(int refreshes) {
  impl_->interval = refreshes;
  impl_->refreshesToGo = refreshes;
}

void CADisplayLink::addToMainRunLoop() {
  DisplayClock::main().add(impl_);
}

void CADisplayLink::skipRefreshes(int count) const {
  impl_->mayBeSkipped = count;
}

int CADisplayLink::skippedRefreshes() const {
  return impl_->skipped;
}

void CADisplayLink::invalidate() {
  impl_->valid = false;
  DisplayClock::main().remove(*impl_);
}

std::chrono::duration<double> CADisplayLink::duration() const {
  return std::chrono::duration<double>(1.0 / DisplayClock::main().refreshRate());
}

}  // namespace platform
