// Converts text to numbers and back as the platform does, independently of the locale. Any thread;
// nothing fails.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// Returns true if the text, after white space, a sign and zeros, continues with Y, y, T, t or a
// digit from 1 to 9.
bool boolValue(const std::string& text);
// These return the decimal number at the start of the text, after white space. They return 0 if
// there is none, and the nearest value of the type, which may be infinite, for a number outside of
// its range.
std::int32_t intValue(const std::string& text);
float floatValue(const std::string& text);
double doubleValue(const std::string& text);

// Returns the number as the format "%f" prints it: with six digits after the point.
std::string decimalText(double value);

}  // namespace platform
