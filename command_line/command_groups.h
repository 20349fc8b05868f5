// The groups in which help and man page list the commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace command_line {

// A group's name and those of its commands, in order.
struct GroupOfNames {
  const char* name;
  std::vector<std::string_view> commands;
};

struct CommandGroup {
  std::string name;
  std::vector<const CLI::App*> commands;
};

// Returns all commands of the program; those that are in no group form the last one.
std::vector<CommandGroup> groupsOf(const CLI::App& app, const std::vector<GroupOfNames>& groups);

}  // namespace command_line
