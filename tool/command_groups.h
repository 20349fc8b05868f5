// The groups in which help and man page list the commands.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

struct CommandGroup {
  std::string name;
  std::vector<const CLI::App*> commands;
};

// Returns all commands; those that are in no group form the last one.
std::vector<CommandGroup> groupsOf(const CLI::App& lumora);

}  // namespace tool
