// The date and time of day. Any thread.
#pragma once

#include <string>

namespace platform {

// Now, as the platform describes a date: "2024-01-09 09:41:00 +0000", always in universal time.
std::string currentDateDescription();

}  // namespace platform
