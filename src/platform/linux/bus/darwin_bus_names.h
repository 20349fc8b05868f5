// How a Darwin notification looks on the bus: one signal, whose only argument is the name.
#pragma once

#include <string>

namespace platform::backend::darwin {

constexpr auto path = "/com/brightfen/lumora/DarwinNotifyCenter";
constexpr auto interface = "com.brightfen.lumora.DarwinNotifyCenter";
constexpr auto signal = "Posted";

// Matches every notification.
inline std::string matchRule() {
  return std::string("type='signal',interface='") + interface + "',member='" + signal + "'";
}

// Matches the notifications of one name, which must not contain an apostrophe.
inline std::string matchRule(const std::string& name) {
  return matchRule() + ",arg0='" + name + "'";
}

}  // namespace platform::backend::darwin
