#include "host/control/settling.h"

#include <functional>
#include <memory>

#include "platform/linux/bus/bus.h"
#include "platform/linux/main_loop/activity.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::RunLoop;
using TimePoint = std::chrono::steady_clock::time_point;

bool turnUntil(const std::function<bool()>& condition, TimePoint limit) {
  while (!condition()) {
    if (RunLoop::main().isStopped() || RunLoop::Clock::now() >= limit) return false;
    RunLoop::main().turn(limit);
  }
  return true;
}

bool deliverMessages(TimePoint limit) {
  platform::backend::Bus* bus = platform::backend::Bus::current();
  if (bus == nullptr) return true;
  auto delivered = std::make_shared<bool>(false);
  bus->whenDelivered([delivered] { *delivered = true; });
  return turnUntil([&delivered] { return *delivered; }, limit);
}

bool isIdle() {
  return platform::backend::pendingBackgroundOperations() == 0;
}

}  // namespace

bool settle(TimePoint limit) {
  std::uint64_t before = 0;
  do {
    before = platform::backend::activityCount();
    RunLoop::main().runMainQueue();
    if (!turnUntil(isIdle, limit) || !deliverMessages(limit)) return false;
    RunLoop::main().runMainQueue();
  } while (platform::backend::activityCount() != before || !isIdle());
  return true;
}

}  // namespace host
