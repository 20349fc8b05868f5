// The time of day that the screen shows. Main thread.
#pragma once

#include <chrono>
#include <string>

namespace host {

struct TimeOfDay {
  // "9:41"
  std::string time;
  // "Tuesday, 9 January"
  std::string date;
};

// Now in local time. With a clock driven by hand, a fixed morning and what has been advanced since,
// so that pictures of the screen are repeatable.
TimeOfDay timeOfDay();

// How long until the time shown changes.
std::chrono::steady_clock::duration untilNextMinute();

}  // namespace host
