// The options with which the home screen starts, for springboard and for `lumora run`.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/options/idiom.h"

namespace host {

// Auto means Window if there is an X11 screen, else Headless. Parsing replaces it by one of the
// two.
enum class DisplayKind { Auto, Window, Desktop, Headless };

// Returns "auto", "window", "desktop" or "headless".
std::string nameOf(DisplayKind display);

struct HostOptions {
  DisplayKind display = DisplayKind::Auto;
  // The upright device in points. Parsing replaces 0 by the usual size of the device, or by the
  // size of the X11 screen on a desktop.
  int width = 0;
  int height = 0;
  // Pixels per point.
  int scale = 1;
  int refreshRate = 60;
  Idiom idiom = Idiom::Phone;
  bool startsLocked = false;
  bool hasManualClock = false;
};

// Declares the options. Parsing checks them and fills in options, which must outlive command.
void addHostOptions(CLI::App& command, HostOptions& options);

// Returns the command-line arguments that give these options.
std::vector<std::string> hostArguments(const HostOptions& options);

}  // namespace host
