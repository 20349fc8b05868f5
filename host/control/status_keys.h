// The keys of the JSON object that the method Status returns.
#pragma once

namespace host::status {

// "locked", "home", screenApp or screenOff.
constexpr auto screen = "screen";
constexpr auto screenApp = "app";
constexpr auto screenOff = "off";
// True if something outside of the home screen hides it, such as windows or a locked session.
constexpr auto covered = "covered";
// True if a desktop's wallpaper has been paused by hand.
constexpr auto paused = "paused";
// True if a desktop's wallpaper is paused on battery or in power-saver mode.
constexpr auto savingPower = "saving_power";
// "portrait", "left", "right" or "upside-down".
constexpr auto orientation = "orientation";
// "phone" or "pad".
constexpr auto idiom = "idiom";
// [width, height] of the upright screen in points.
constexpr auto size = "size";
// Pixels per point.
constexpr auto scale = "scale";
// Refreshes of the display per second.
constexpr auto refreshRate = "refresh_rate";
// True if only the method Advance moves the clock.
constexpr auto isClockManual = "is_clock_manual";
// How often the process has run out of memory.
constexpr auto outOfMemory = "out_of_memory";
// How often the view tree was changed on another thread than the main thread.
constexpr auto changesOffMainThread = "changes_off_main_thread";
// An array of all views, parents first, siblings from back to front. Each is an object with the
// keys class, tag and hidden, the four below and, for animated views, those of
// gifview/description_keys.h.
constexpr auto views = "views";
// The name of the class that objc_getClass knows.
constexpr auto className = "class";
constexpr auto tag = "tag";
constexpr auto hidden = "hidden";
// The index of the superview in the array; null for the first view.
constexpr auto parent = "parent";
// The name of the view's C++ class, such as "host::DockView".
constexpr auto type = "type";
// [x, y, width, height] in points, in the superview's coordinates.
constexpr auto frame = "frame";
// False if the view or one that contains it is hidden.
constexpr auto visible = "visible";
// "window", displayDesktop or "headless".
constexpr auto display = "display";
constexpr auto displayDesktop = "desktop";
// An array of a desktop's outputs, empty on other displays. Each is an object with these keys.
constexpr auto outputs = "outputs";
namespace output {
// The display system's name, such as "HDMI-1".
constexpr auto name = "name";
// [x, y, width, height] in the display system's units.
constexpr auto area = "area";
// Pixels per unit.
constexpr auto scale = "scale";
// True if nothing of it can be seen.
constexpr auto isUnseen = "unseen";
// True if the options choose it, even if it is excepted later.
constexpr auto isWanted = "wanted";
// True if the wallpaper is to be shown on it.
constexpr auto isChosen = "chosen";
// True once the wallpaper is shown on it.
constexpr auto isPainted = "painted";
}  // namespace output

}  // namespace host::status
