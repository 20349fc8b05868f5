// How the home screen is reached on its bus.
#pragma once

namespace host::control {

// Owned from the moment the host has finished launching.
constexpr auto busName = "com.brightfen.lumora.SpringBoard";
constexpr auto path = "/com/brightfen/lumora/SpringBoard";
constexpr auto interface = "com.brightfen.lumora.SpringBoard";

// Its methods. The first ones take nothing and answer when their effects are there.
namespace method {
constexpr auto lock = "Lock";
constexpr auto home = "Home";
constexpr auto openApp = "OpenApp";
constexpr auto closeApp = "CloseApp";
constexpr auto displayOn = "DisplayOn";
constexpr auto displayOff = "DisplayOff";
// (orientation: "portrait", "left", "right" or "upside-down")
constexpr auto rotate = "Rotate";
// (nanoseconds, most nanoseconds of real time); of a manual clock.
constexpr auto advance = "Advance";
// Returns whether nothing is left to do, after two seconds at most.
constexpr auto settle = "Settle";
// Returns the report of status_report.h.
constexpr auto status = "Status";
// Returns a descriptor of a PNG file.
constexpr auto screenshot = "Screenshot";
// Ends the home screen.
constexpr auto stop = "Stop";
}  // namespace method

}  // namespace host::control
