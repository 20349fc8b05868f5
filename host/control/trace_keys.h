// The keys of the JSON objects that the method Trace and the signal Traced give.
#pragma once

namespace host::trace_event {

// Milliseconds since 1970.
constexpr auto time = "time";
// A line of text.
constexpr auto text = "text";
// The place in what Trace returns. Missing if it does not return the event.
constexpr auto number = "number";

}  // namespace host::trace_event
