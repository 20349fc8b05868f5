#include "platform/linux/main_loop/run_loop.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "platform/linux/main_loop/activity.h"
#include "platform/linux/main_loop/display_clock.h"

namespace platform::backend {

// Never destroyed, because views and queues may use it while the process exits.
RunLoop& RunLoop::main() {
  static auto* instance = new RunLoop;
  return *instance;
}

RunLoop::RunLoop() : wakeDescriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void RunLoop::perform(Block block) {
  noteActivity();
  std::lock_guard lock(mutex_);
  queue_.push_back(std::move(block));
  if (isAsleep_) wake();
}

std::vector<RunLoop::Block> RunLoop::takeQueue() {
  std::lock_guard lock(mutex_);
  return std::exchange(queue_, {});
}

bool RunLoop::runMainQueue() {
  bool ran = false;
  for (auto blocks = takeQueue(); !blocks.empty(); blocks = takeQueue()) {
    ran = true;
    for (Block& block : blocks) {
      block();
      block = nullptr;
    }
  }
  if (ran) sourcesMayHaveMore_ = true;
  return ran;
}

void RunLoop::addSource(int fileDescriptor, Source handler) {
  sources_[fileDescriptor] = std::make_shared<Source>(std::move(handler));
  sourcesMayHaveMore_ = true;
}

void RunLoop::removeSource(int fileDescriptor) {
  sources_.erase(fileDescriptor);
}

void RunLoop::setAlarm(const void* owner, Clock::time_point moment, Block block) {
  alarms_[owner] = {moment, std::move(block)};
}

void RunLoop::clearAlarm(const void* owner) {
  alarms_.erase(owner);
}

void RunLoop::setDrawing(Draw draw) {
  draw_ = std::move(draw);
}

void RunLoop::setNeedsDisplay() {
  std::lock_guard lock(mutex_);
  needsDisplay_ = Need::All;
  if (isAsleep_) wake();
}

void RunLoop::setNeedsPartialDisplay() {
  std::lock_guard lock(mutex_);
  if (needsDisplay_ == Need::Nothing) needsDisplay_ = Need::Part;
  if (isAsleep_) wake();
}

void RunLoop::stop() {
  stopped_ = true;
  wake();
}

bool RunLoop::handleDue() {
  sourcesMayHaveMore_ = true;
  return handleWhatMayBeDue();
}

// A refresh alone does not cause the sources to be checked, because most refreshes show no new
// frame.
bool RunLoop::handleWhatMayBeDue() {
  DisplayClock& display = DisplayClock::main();
  display.catchUp(Clock::now());
  bool worked = handleOtherWork();
  if (worked) display.endSkipping();
  display.refreshIfDue(Clock::now());
  worked = drawIfNeeded() || worked;
  if (worked) sourcesMayHaveMore_ = true;
  return worked;
}

bool RunLoop::handleOtherWork() {
  bool worked = std::exchange(sourcesMayHaveMore_, false) && handleSources();
  worked = runMainQueue() || worked;
  return callAlarms() || worked;
}

void RunLoop::turn(std::optional<Clock::time_point> limit) {
  if (!handleWhatMayBeDue() && !stopped_) sleep(limit);
}

bool RunLoop::handleSources() {
  std::vector<std::shared_ptr<Source>> handlers;
  for (const auto& [descriptor, handler] : sources_) handlers.push_back(handler);
  bool worked = false;
  for (const auto& handler : handlers) worked = (*handler)() || worked;
  return worked;
}

// A block may set and clear alarms.
bool RunLoop::callAlarms() {
  std::vector<const void*> due;
  const auto now = Clock::now();
  for (const auto& [owner, alarm] : alarms_) {
    if (alarm.moment <= now) due.push_back(owner);
  }
  for (const void* owner : due) {
    const auto alarm = alarms_.extract(owner);
    if (alarm) alarm.mapped().block();
  }
  return !due.empty();
}

bool RunLoop::drawIfNeeded() {
  if (!draw_) return false;
  Need need = Need::Nothing;
  {
    std::lock_guard lock(mutex_);
    need = std::exchange(needsDisplay_, Need::Nothing);
  }
  if (need == Need::Nothing) return false;
  draw_(need == Need::All);
  return true;
}

// Returns false if there is something to do already.
bool RunLoop::beginSleep() {
  std::lock_guard lock(mutex_);
  isAsleep_ = queue_.empty() && (needsDisplay_ == Need::Nothing || !draw_);
  return isAsleep_;
}

void RunLoop::sleep(std::optional<Clock::time_point> limit) {
  if (!beginSleep()) return;
  std::optional<Clock::time_point> until = limit;
  auto sooner = [&until](Clock::time_point moment) {
    until = until ? std::min(*until, moment) : moment;
  };
  for (const auto& [owner, alarm] : alarms_) sooner(alarm.moment);
  if (auto refresh = DisplayClock::main().nextRefresh()) sooner(*refresh);

  std::vector<pollfd> descriptors{{wakeDescriptor_, POLLIN, 0}};
  for (const auto& [descriptor, handler] : sources_) descriptors.push_back({descriptor, POLLIN, 0});
  timespec span{};
  if (until) {
    const auto rest = std::max(*until - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(rest);
    span.tv_sec = seconds.count();
    span.tv_nsec = std::chrono::nanoseconds(rest - seconds).count();
  }
  const int ready = ppoll(descriptors.data(), descriptors.size(), until ? &span : nullptr, nullptr);
  {
    std::lock_guard lock(mutex_);
    isAsleep_ = false;
  }
  if (ready != 0) sourcesMayHaveMore_ = true;
  if (descriptors.front().revents != 0) {
    std::uint64_t count = 0;
    [[maybe_unused]] ssize_t size = read(wakeDescriptor_, &count, sizeof count);
  }
}

void RunLoop::wake() const {
  const std::uint64_t one = 1;
  [[maybe_unused]] ssize_t size = write(wakeDescriptor_, &one, sizeof one);
}

}  // namespace platform::backend
