// Helpers for declaring commands on the command line.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "command_line/number_check.h"
#include "command_line/one_of.h"

namespace command_line {

// What the parser and the commands of one line share. Lives until the line has been performed.
struct Context {
  // Performs the command and returns the exit code. Set by parsing, and called after the whole line
  // has been parsed, so that a wrong line has no effect. May throw Failure.
  std::function<int()> action;
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
  return acceptOneOf(command->add_option(name, value, description)->required(), words);
}

// Adds the option --timeout and returns it. seconds: the default, a whole number.
inline CLI::Option* addTimeout(CLI::App* command, double& seconds) {
  constexpr long maxTimeout = 1'000'000;
  return command->add_option("--timeout", seconds, "longest time to wait")
      ->check(numberUpTo(maxTimeout))
      ->type_name("SECONDS")
      ->default_str(std::to_string(static_cast<int>(seconds)));
}

}  // namespace command_line
