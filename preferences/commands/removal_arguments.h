// The arguments of `remove`, and what it says.
#pragma once

#include <string>

#include "command_line/command.h"

namespace preferences {

constexpr auto allHidden =
    "all wallpapers hidden; their files stay, and they come back when a screen is shown anew";

// Adds LOCATION, one of the locations or "all", and --forget. Returns LOCATION. Both values must
// outlive the parsing.
inline CLI::Option* addRemovalArguments(CLI::App* command, std::string& location, bool& forgets) {
  command->add_flag("--forget", forgets, "with all: delete the GIFs and their frames, too");
  return command_line::addChoice(
      command, "LOCATION", location, {"shared", "lockscreen", "homescreen", "all"},
      "wallpaper whose GIF is deleted; all hides them and keeps the files");
}

}  // namespace preferences
