// Helpers for declaring the commands of lumora.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "command_line/command.h"
#include "command_line/progress_bar.h"
#include "preferences/location_names.h"
#include "tool/device/device_folder.h"
#include "tool/device/output_devices.h"

namespace tool {

// What the parser and the commands of one line share.
struct Context : command_line::Context {
  // The value of --root, or "".
  std::string root;
  // The value of --output, or "".
  std::string output;
  // performLine of command_line.h, for commands that perform other lines.
  std::function<int(std::vector<std::string>)> performLine;

  // Return the device that the command is for: the one of the output, if there is --output. Throw
  // Failure if the folder cannot be used or the output has no wallpaper of its own.
  DeviceFolder device() const { return DeviceFolder(folder()); }
  DeviceFolder madeDevice() const { return DeviceFolder(folder(), IfMissing::Make); }

 private:
  std::string folder() const {
    if (output.empty()) return root;
    return existingFolderOfOutput(DeviceFolder(root), output);
  }
};

// Adds the option --progress.
inline void addProgress(CLI::App* command, command_line::ProgressStyle& style) {
  command->add_flag_callback(
      "--progress", [&style] { style = command_line::ProgressStyle::Lines; },
      "print each step as a JSON object, for other programs");
}

// Adds the option --output to a command that can be for the wallpaper of one output.
inline CLI::Option* addOutput(CLI::App* command, std::string& output) {
  return command
      ->add_option("--output", output,
                   "only the output with this name, which has a wallpaper of its own")
      ->check(
          CLI::Validator([](const std::string& name) { return problemWithOutputName(name); }, ""))
      ->type_name("OUTPUT");
}

using command_line::addChoice;
using command_line::addCommand;
using command_line::addTimeout;
using command_line::numberUpTo;
using preferences::locationNamed;
using preferences::locationNames;

}  // namespace tool
