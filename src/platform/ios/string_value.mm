#include "platform/string_value.h"

#import "platform/ios/native_string.h"

namespace platform {

bool boolValue(const std::string& text) {
  return [nativeString(text) boolValue];
}

std::int32_t intValue(const std::string& text) {
  return [nativeString(text) intValue];
}

float floatValue(const std::string& text) {
  return [nativeString(text) floatValue];
}

double doubleValue(const std::string& text) {
  return [nativeString(text) doubleValue];
}

std::string decimalText(double value) {
  return standardString([NSString stringWithFormat:@"%f", value]);
}

}  // namespace platform
