// How the home screen is to start. Shared by the home-screen program and the command that starts
// it.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/options/idiom.h"

namespace host {

// Auto is a window where there is a screen to show one on, else headless; once options have been
// parsed, it is decided.
enum class DisplayKind { Auto, Window, Desktop, Headless };

// "auto", "window", "desktop" or "headless".
std::string nameOf(DisplayKind display);

struct HostOptions {
  DisplayKind display = DisplayKind::Auto;
  // In points, of the upright device; 0 takes the kind of device's usual size.
  int width = 0;
  int height = 0;
  // Pixels per point.
  int scale = 1;
  int refreshRate = 60;
  Idiom idiom = Idiom::Phone;
  bool startsLocked = false;
  bool hasManualClock = false;
};

// Declares the options on a command line; they are filled in, and checked, when it is parsed.
void addHostOptions(CLI::App& command, HostOptions& options);

// The options as arguments that addHostOptions takes.
std::vector<std::string> hostArguments(const HostOptions& options);

}  // namespace host
