#include "host/control/trace_report.h"

#include <nlohmann/json.hpp>

#include "host/control/trace_keys.h"

namespace host {
namespace {

using nlohmann::json;
using platform::backend::TraceEvent;

json describe(const TraceEvent& event) {
  const auto time =
      std::chrono::duration_cast<std::chrono::milliseconds>(event.time.time_since_epoch());
  json description = {{trace_event::time, time.count()}, {trace_event::text, event.text}};
  if (event.number) description[trace_event::number] = *event.number;
  return description;
}

// An extension may use names that are not UTF-8.
std::string dumped(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace

std::string traceReport(const TraceEvent& event) {
  return dumped(describe(event));
}

std::string traceReport(const std::vector<TraceEvent>& events) {
  json report = json::array();
  for (const TraceEvent& event : events) report.push_back(describe(event));
  return dumped(report);
}

}  // namespace host
