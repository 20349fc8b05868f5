// The numbers that the platform reads out of texts, and the text it makes of a number. Pure;
// independent of the locale.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// True when the text, after white space, a sign and zeros, goes on with Y, y, T, t or 1 to 9.
bool boolValue(const std::string& text);
// The leading decimal number; 0 when there is none, the nearest end of the range beyond it.
std::int32_t intValue(const std::string& text);
float floatValue(const std::string& text);
double doubleValue(const std::string& text);

// Six digits after the point, as the format "%f" gives them.
std::string decimalText(double value);

}  // namespace platform
