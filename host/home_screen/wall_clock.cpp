#include "host/home_screen/wall_clock.h"

#include <ctime>

#include "host/home_screen/time_format.h"
#include "platform/linux/main_loop/display_clock.h"

namespace host {
namespace {

using std::chrono::system_clock;

// 9 January 2024, 9:41, counted as if local time were UTC.
constexpr std::time_t manualStart = 1704793260;

std::tm brokenDown() {
  const auto& clock = platform::backend::DisplayClock::main();
  std::tm moment{};
  if (clock.isManual()) {
    const auto advanced = std::chrono::duration_cast<std::chrono::seconds>(clock.manualTime());
    const std::time_t seconds = manualStart + advanced.count();
    gmtime_r(&seconds, &moment);
  } else {
    const std::time_t seconds = system_clock::to_time_t(system_clock::now());
    localtime_r(&seconds, &moment);
  }
  return moment;
}

}  // namespace

TimeOfDay timeOfDay() {
  const std::tm moment = brokenDown();
  return {timeText(moment), dateText(moment)};
}

std::chrono::steady_clock::duration untilNextMinute() {
  const auto now = system_clock::now();
  return std::chrono::ceil<std::chrono::minutes>(now.time_since_epoch()) - now.time_since_epoch();
}

}  // namespace host
