// Helpers for declaring commands on the command line.
#pragma once

#include <charconv>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/options/one_of.h"
#include "preferences/location_names.h"
#include "tool/device/device_folder.h"
#include "tool/device/output_devices.h"
#include "tool/support/progress_bar.h"

namespace tool {

// What the parser and the commands of one line share. Lives until the line has been performed.
struct Context {
  // The value of --root, or "".
  std::string root;
  // The value of --output, or "".
  std::string output;
  // Performs the command and returns the exit code. Set by parsing, and called after the whole line
  // has been parsed, so that a wrong line has no effect. May throw Failure.
  std::function<int()> action;
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

// Declares a command. perform does its work; it may throw Failure, otherwise the exit code is 0.
// context must outlive the parsing and the performing. Returns the command, owned by parent.
inline CLI::App* addCommand(CLI::App& parent, Context& context, const std::string& name,
                            const std::string& description, std::function<void()> perform) {
  CLI::App* command = parent.add_subcommand(name, description);
  command->callback([&context, perform = std::move(perform)] {
    context.action = [perform] {
      perform();
      return 0;
    };
  });
  return command;
}

// Adds a required positional argument that must be one of the given words, in any case; value gets
// it as given here.
inline CLI::Option* addChoice(CLI::App* command, const std::string& name, std::string& value,
                              const std::vector<std::string>& words,
                              const std::string& description) {
  return host::acceptOneOf(command->add_option(name, value, description)->required(), words);
}

// Returns a check that accepts decimal numbers from 0 to max.
inline CLI::Validator numberUpTo(long max) {
  const std::string limits = "must be a number from 0 to " + std::to_string(max);
  return CLI::Validator(
      [max, limits](const std::string& text) {
        double value = -1;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        // NaN fails, too, because every comparison with it is false.
        const bool fits = error == std::errc() && end == text.data() + text.size() && value >= 0 &&
                          value <= static_cast<double>(max);
        return fits ? std::string() : limits + ", not " + text;
      },
      "");
}

// Adds the option --timeout.
inline void addTimeout(CLI::App* command, double& seconds) {
  constexpr long maxTimeout = 1'000'000;
  command->add_option("--timeout", seconds, "longest time to wait")
      ->check(numberUpTo(maxTimeout))
      ->type_name("SECONDS")
      ->capture_default_str();
}

// Adds the option --progress.
inline void addProgress(CLI::App* command, ProgressStyle& style) {
  command->add_flag_callback(
      "--progress", [&style] { style = ProgressStyle::Lines; },
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

using preferences::locationNamed;
using preferences::locationNames;

}  // namespace tool
