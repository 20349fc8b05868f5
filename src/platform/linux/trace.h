// Tells what extensions do: the hooks that they take and miss, and the messages that they send and
// receive. Any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform::backend {

struct TraceEvent {
  std::chrono::system_clock::time_point time;
  std::string text;
  // The place among the hooks that are kept, from 0; nothing for events that are not kept.
  std::optional<std::size_t> number;
};

// Tells of a hook, and keeps the event, because most hooks are taken before anybody listens. After
// a thousand, events are no longer kept.
void traceHook(std::string text);
// Tells of a message.
void traceMessage(std::string text);

// Returns the hooks that are kept.
std::vector<TraceEvent> tracedHooks();
// Calls the listener for each event from now on, on the thread that it happens on. Replaces an
// earlier listener.
void setTraceListener(std::function<void(const TraceEvent&)> listener);

}  // namespace platform::backend
