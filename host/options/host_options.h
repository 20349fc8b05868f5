// The options with which the home screen starts, for springboard and for `lumora run`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/options/desktop_options.h"
#include "host/options/idiom.h"

namespace host {

// Auto means Window if there is an X11 screen, else Headless. Parsing replaces it by one of the
// two.
enum class DisplayKind { Auto, Window, Desktop, Headless };

// Returns "auto", "window", "desktop" or "headless".
std::string nameOf(DisplayKind display);
// Returns "phone" or "pad".
std::string nameOf(Idiom idiom);

struct HostOptions {
  DisplayKind display = DisplayKind::Auto;
  // Why Auto has become Headless although the user has a display; otherwise "".
  std::string missingDisplay;
  // The upright device in points. 0: the usual size of the device, by which parsing replaces it. On
  // a desktop the host replaces it by the size of an output.
  int width = 0;
  int height = 0;
  // Pixels per point. Nothing: 1, and in a window as many as the monitor suggests.
  std::optional<int> scale;
  // Returns the pixels per point of screenshots.
  int scaleOfScreenshots() const { return scale.value_or(1); }
  int refreshRate = 60;
  Idiom idiom = Idiom::Phone;
  bool startsLocked = false;
  bool hasManualClock = false;
  // True if a window shows at the start what its keys do. Nothing: only the first window of the
  // device does.
  std::optional<bool> showsKeys;
  // True if a window shows short transitions from one screen to another.
  bool hasMotion = true;
  DesktopOptions desktop;
};

// Declares the options. Parsing checks them and fills in options, which must outlive command.
void addHostOptions(CLI::App& command, HostOptions& options);

// Returns nothing if the text is none of "blur", "still", a color and the path of a file, which may
// be missing.
std::optional<BackdropOptions> parsedBackdrop(const std::string& text);
constexpr auto backdropProblem =
    "must be blur, still, a color such as #203040, or a PNG or GIF file";
constexpr auto backdropValues = "blur|still|COLOR|FILE";
constexpr auto backdropHelp =
    "what to show beside the GIF: a blurred copy of it (the default), the still wallpaper, a color "
    "such as #203040, or a PNG or GIF file";
// Returns the text that gives this backdrop.
std::string textOf(const BackdropOptions& backdrop);

// Returns the command-line arguments that give these options.
std::vector<std::string> hostArguments(const HostOptions& options);

}  // namespace host
