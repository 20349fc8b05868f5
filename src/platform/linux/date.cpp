#include "platform/date.h"

#include <ctime>

namespace platform {

std::string currentDateDescription() {
  const std::time_t now = std::time(nullptr);
  std::tm universal{};
  gmtime_r(&now, &universal);
  char text[64];
  const std::size_t length =
      std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S +0000", &universal);
  return std::string(text, length);
}

}  // namespace platform
