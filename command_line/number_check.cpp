#include "command_line/number_check.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace command_line {
namespace {

// Returns nothing if the text is not a decimal number. std::from_chars is missing in the C++
// library of old phones; std::strtod accepts more, such as spaces and hexadecimal numbers.
std::optional<double> numberIn(const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789.eE+-") != text.npos) return std::nullopt;
  if (text.front() == '+') return std::nullopt;
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  return end == text.c_str() + text.size() ? std::optional(value) : std::nullopt;
}

}  // namespace

CLI::Validator numberUpTo(long max) {
  const std::string limits = "must be a number from 0 to " + std::to_string(max);
  return CLI::Validator(
      [max, limits](const std::string& text) {
        const auto value = numberIn(text);
        const bool fits = value && *value >= 0 && *value <= static_cast<double>(max);
        return fits ? std::string() : limits + ", not " + text;
      },
      "");
}

}  // namespace command_line
