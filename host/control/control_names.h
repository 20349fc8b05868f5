// The names of the home screen's remote control on its D-Bus daemon.
#pragma once

namespace host::service {

// The host owns this name once it has finished launching.
constexpr auto busName = "com.brightfen.lumora.SpringBoard";
constexpr auto path = "/com/brightfen/lumora/SpringBoard";
constexpr auto interface = "com.brightfen.lumora.SpringBoard";

// Methods. One that fails gives a text for the user. Those up to rotate fail on a desktop; they
// and the next two answer when the device has settled, or after two seconds.
namespace method {
constexpr auto lock = "Lock";
constexpr auto home = "Home";
constexpr auto openApp = "OpenApp";
constexpr auto closeApp = "CloseApp";
constexpr auto displayOn = "DisplayOn";
constexpr auto displayOff = "DisplayOff";
// (orientation: "portrait", "left", "right" or "upside-down").
constexpr auto rotate = "Rotate";
// Tells that another GIF has been imported. A desktop fades to it and adapts its backdrop.
constexpr auto noteNewWallpaper = "NoteNewWallpaper";
// (name of the GIF or GIFs that are set). Shows it in the title of a window.
constexpr auto setWallpaperName = "SetWallpaperName";
// (names of outputs). Replaces the outputs on which a desktop's wallpaper is not shown, although
// they may be chosen. Fails on other displays.
constexpr auto setExceptedOutputs = "SetExceptedOutputs";
// (backdrop, as the option of the same name). Replaces what is shown beside the picture. Fails on
// other displays.
constexpr auto setBackdrop = "SetBackdrop";
// Pause and resume a desktop's wallpaper. Fail on other displays.
constexpr auto pause = "Pause";
constexpr auto resume = "Resume";
// (nanoseconds, timeout in nanoseconds of real time). Advances the clock and answers when all
// effects are there. Fails at the timeout, or if the clock is not manual.
constexpr auto advance = "Advance";
// Waits until nothing is left to do, for two seconds at most. Returns false if something is left
// then.
constexpr auto settle = "Settle";
// Returns the JSON text of status_report.h.
constexpr auto status = "Status";
// Returns the JSON text of trace_report.h: the hooks so far.
constexpr auto trace = "Trace";
// Returns a descriptor of an unnamed PNG file with a picture of the screen.
constexpr auto screenshot = "Screenshot";
// Returns a descriptor of an unnamed file with the pixels of such a picture, its width and its
// height: rows from the top without padding, 4 bytes per pixel, which are blue, green, red and one
// without meaning (on a processor that stores the lowest byte first).
constexpr auto pixels = "Pixels";
// Answers and ends the home screen.
constexpr auto stop = "Stop";
}  // namespace method

// The signal (JSON text of trace_report.h) for a new hook or message.
constexpr auto traced = "Traced";

}  // namespace host::service
