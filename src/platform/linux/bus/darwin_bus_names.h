// The form of a Darwin notification on the bus: a signal whose only argument is the name.
#pragma once

#include <string>

namespace platform::backend::darwin {

constexpr auto path = "/com/brightfen/lumora/DarwinNotifyCenter";
constexpr auto interface = "com.brightfen.lumora.DarwinNotifyCenter";
constexpr auto signal = "Posted";

// Returns a rule that matches every notification.
inline std::string matchRule() {
  return std::string("type='signal',interface='") + interface + "',member='" + signal + "'";
}

// Returns a rule that matches notifications of one name, which must not contain an apostrophe.
inline std::string matchRule(const std::string& name) {
  return matchRule() + ",arg0='" + name + "'";
}

}  // namespace platform::backend::darwin
