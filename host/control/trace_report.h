// What extensions do, as the home screen's clients get it.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/trace.h"

namespace host {

// Return a JSON object with the keys of trace_keys.h, and an array of such objects.
std::string traceReport(const platform::backend::TraceEvent& event);
std::string traceReport(const std::vector<platform::backend::TraceEvent>& events);

}  // namespace host
