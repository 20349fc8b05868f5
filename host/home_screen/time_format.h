// How the user's locale writes the time of day and the date.
#pragma once

#include <ctime>
#include <string>

namespace host {

// Returns the time of day, such as "9:41": with twelve hours if the locale's own format has them.
std::string timeText(const std::tm& moment);
// Returns the weekday, day and month, such as "Tuesday, 9 January", in the locale's language and
// order, or in English if the screen's fonts lack its script.
std::string dateText(const std::tm& moment);

}  // namespace host
