#include "command_line/size_text.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace command_line {

std::string textOfSize(std::uint64_t bytes) {
  constexpr std::array units = {"bytes", "kB", "MB", "GB", "TB"};
  constexpr double step = 1000;
  auto size = static_cast<double>(bytes);
  std::size_t unit = 0;
  for (; size >= step && unit + 1 < units.size(); ++unit) size /= step;
  char text[32];
  std::snprintf(text, sizeof text, unit == 0 ? "%.0f %s" : "%.1f %s", size, units[unit]);
  return text;
}

}  // namespace command_line
