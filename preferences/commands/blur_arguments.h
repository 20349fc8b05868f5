// The arguments of `blur`.
#pragma once

#include <string>

#include "command_line/command.h"
#include "preferences/location_names.h"

namespace preferences {

// Adds LOCATION and RADIUS. Both texts must outlive the parsing.
inline void addBlurArguments(CLI::App* command, std::string& location, std::string& radius) {
  constexpr long maxRadius = 1000;
  command_line::addChoice(command, "LOCATION", location, locationNames, "wallpaper to blur");
  command
      ->add_option("RADIUS", radius,
                   "strength, up to 1000: the standard deviation in pixels of the GIF; 0 is sharp")
      ->required()
      ->check(command_line::numberUpTo(maxRadius));
}

}  // namespace preferences
