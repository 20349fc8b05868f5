// The keys of the JSON object that the host answers to `Status` (status_report.h).
#pragma once

namespace host::status {

// "locked", "home", "app" or "off".
constexpr auto screen = "screen";
// Whether something outside of the home screen hides it: windows, a locked session.
constexpr auto covered = "covered";
// "portrait", "left", "right" or "upside-down".
constexpr auto orientation = "orientation";
// "phone" or "pad".
constexpr auto idiom = "idiom";
// [width, height] of the upright screen in points.
constexpr auto size = "size";
// Pixels a point.
constexpr auto scale = "scale";
// How often the memory did not suffice for a picture.
constexpr auto outOfMemory = "out_of_memory";
// How often the view tree was changed outside of the main thread.
constexpr auto changesOffMainThread = "changes_off_main_thread";
// An array of every view of the tree, each one before its subviews, these back to front. Each has
// what it tells of itself, and the following two.
constexpr auto views = "views";
// [x, y, width, height] in points, in the superview.
constexpr auto frame = "frame";
// False if the view or one above it is hidden.
constexpr auto visible = "visible";

}  // namespace host::status
