// The date and time of day. Any thread.
#pragma once

#include <string>

namespace platform {

// Returns the current date and time as the platform describes a date, always in UTC:
// "2024-01-09 09:41:00 +0000". Never fails.
std::string currentDateDescription();

}  // namespace platform
