// The time of day that the screen shows. Main thread.
#pragma once

#include <chrono>
#include <string>

namespace host {

struct TimeOfDay {
  // As time_format.h writes them.
  std::string time;
  std::string date;

  bool operator==(const TimeOfDay&) const = default;
};

// Returns the local time. With a manual clock, returns a fixed morning plus the time advanced since
// launch, so that screenshots are repeatable.
TimeOfDay timeOfDay();

// Returns the time until the minute changes.
std::chrono::steady_clock::duration untilNextMinute();

}  // namespace host
