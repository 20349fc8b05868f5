#include "platform/linux/trace.h"

#include <mutex>
#include <utility>

namespace platform::backend {
namespace {

constexpr std::size_t maxKept = 1000;

struct Trace {
  std::mutex mutex;
  std::vector<TraceEvent> hooks;
  std::function<void(const TraceEvent&)> listener;
};

Trace& trace() {
  static auto* instance = new Trace;
  return *instance;
}

void tell(std::string text, bool isHook) {
  TraceEvent event{std::chrono::system_clock::now(), std::move(text), std::nullopt};
  std::unique_lock lock(trace().mutex);
  auto& hooks = trace().hooks;
  if (isHook && hooks.size() < maxKept) {
    event.number = hooks.size();
    hooks.push_back(event);
  }
  const auto listener = trace().listener;
  lock.unlock();
  if (listener) listener(event);
}

}  // namespace

void traceHook(std::string text) {
  tell(std::move(text), true);
}

void traceMessage(std::string text) {
  tell(std::move(text), false);
}

std::vector<TraceEvent> tracedHooks() {
  std::lock_guard lock(trace().mutex);
  return trace().hooks;
}

void setTraceListener(std::function<void(const TraceEvent&)> listener) {
  std::lock_guard lock(trace().mutex);
  trace().listener = std::move(listener);
}

}  // namespace platform::backend
