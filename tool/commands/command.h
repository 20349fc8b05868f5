// What every command needs: the device, and a way to say what the command does once the line is
// known to be right.
#pragma once

#include <cctype>
#include <charconv>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "settings/locations.h"
#include "tool/device/device_folder.h"
#include "tool/device/host_connection.h"

namespace tool {

// Lives as long as the command line is worked on.
struct Context {
  std::string root;
  // Runs after the whole line has been parsed; gives the exit code.
  std::function<int()> action;
  // Works on a whole line of its own, given as its words; as performLine in command_line.h.
  std::function<int(std::vector<std::string>)> performLine;

  DeviceFolder device() const { return DeviceFolder(root); }
};

// Declares a command with its description; perform is what it does.
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

// A required positional argument that must be one of the words given.
inline CLI::Option* addChoice(CLI::App* command, const std::string& name, std::string& value,
                              const std::vector<std::string>& words) {
  return command->add_option(name, value, CLI::detail::join(words, ", "))
      ->required()
      ->check(CLI::IsMember(words));
}

// Accepts decimal numbers from 0 to the largest given.
inline CLI::Validator numberUpTo(long largest) {
  const std::string limits = "must be a number from 0 to " + std::to_string(largest);
  return CLI::Validator(
      [largest, limits](const std::string& text) {
        double value = -1;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        // Written so that what is no number at all fails, too.
        const bool fits = error == std::errc() && end == text.data() + text.size() && value >= 0 &&
                          value <= static_cast<double>(largest);
        return fits ? std::string() : limits + ", not " + text;
      },
      "");
}

inline void addTimeout(CLI::App* command, double& seconds) {
  constexpr long maxTimeout = 1'000'000;
  command->add_option("--timeout", seconds, "how long to wait at most")
      ->check(numberUpTo(maxTimeout))
      ->type_name("SECONDS")
      ->capture_default_str();
}

inline const std::vector<std::string> locationNames = {"shared", "lockscreen", "homescreen"};

// Of one of locationNames.
inline const lumora::Location& locationNamed(std::string name) {
  for (char& letter : name) letter = static_cast<char>(std::toupper(letter));
  return *lumora::locationWithIdentifier(name);
}

}  // namespace tool
