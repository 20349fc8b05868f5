// How the home screen is reached on its bus.
#pragma once

namespace host::control {

// Owned from the moment the host has finished launching.
constexpr auto busName = "com.brightfen.lumora.SpringBoard";
constexpr auto path = "/com/brightfen/lumora/SpringBoard";
constexpr auto interface = "com.brightfen.lumora.SpringBoard";

}  // namespace host::control
