#include "platform/string_value.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <system_error>
#include <type_traits>

namespace platform {
namespace {

const char* skipSpace(const char* at, const char* end) {
  return std::find_if_not(at, end,
                          [](unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); });
}

// Returns the value of Number that is nearest to a decimal number outside of its range.
template <typename Number>
Number nearest(const char* number) {
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  if constexpr (std::is_same_v<Number, float>) return strtof_l(number, nullptr, plain);
  return strtod_l(number, nullptr, plain);
}

// Returns an infinity for a number that is too large for Number, and 0 for one that is too small.
template <typename Number>
Number leadingNumber(const std::string& text) {
  const char* end = text.data() + text.size();
  const char* at = skipSpace(text.data(), end);
  if (at != end && *at == '+' && at + 1 != end && at[1] != '-') ++at;
  // std::from_chars also accepts words such as "inf".
  const char* digits = at != end && *at == '-' ? at + 1 : at;
  if (digits == end || !(*digits == '.' || (*digits >= '0' && *digits <= '9'))) return 0;
  Number value = 0;
  const auto [stop, error] = std::from_chars(at, end, value);
  if (error == std::errc::result_out_of_range)
    return nearest<Number>(std::string(at, stop).c_str());
  return value;
}

}  // namespace

bool boolValue(const std::string& text) {
  const char* end = text.data() + text.size();
  const char* at = skipSpace(text.data(), end);
  if (at != end && (*at == '+' || *at == '-')) ++at;
  at = std::find_if_not(at, end, [](char c) { return c == '0'; });
  if (at == end) return false;
  return *at == 'Y' || *at == 'y' || *at == 'T' || *at == 't' || (*at >= '1' && *at <= '9');
}

std::int32_t intValue(const std::string& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const char* end = text.data() + text.size();
  const char* at = skipSpace(text.data(), end);
  if (at != end && *at == '+' && at + 1 != end && at[1] != '-') ++at;
  std::int32_t value = 0;
  const auto [stop, error] = std::from_chars(at, end, value);
  if (error == std::errc::result_out_of_range) return *at == '-' ? Limits::min() : Limits::max();
  return value;
}

float floatValue(const std::string& text) {
  return leadingNumber<float>(text);
}

double doubleValue(const std::string& text) {
  return leadingNumber<double>(text);
}

std::string decimalText(double value) {
  // The longest double has 309 digits before the point.
  char buffer[400];
  constexpr int decimals = 6;
  const auto [end, error] =
      std::to_chars(buffer, std::end(buffer), value, std::chars_format::fixed, decimals);
  return std::string(buffer, end);
}

}  // namespace platform
