#include "command_line/command_groups.h"

#include <algorithm>
#include <utility>

namespace command_line {

std::vector<CommandGroup> groupsOf(const CLI::App& app, const std::vector<GroupOfNames>& groups) {
  std::vector<const CLI::App*> rest = app.get_subcommands({});
  std::vector<CommandGroup> found;
  for (const GroupOfNames& names : groups) {
    CommandGroup group{names.name, {}};
    for (const std::string_view name : names.commands) {
      const auto command = std::ranges::find(rest, name, &CLI::App::get_name);
      if (command == rest.end()) continue;
      group.commands.push_back(*command);
      rest.erase(command);
    }
    found.push_back(std::move(group));
  }
  if (!rest.empty()) found.push_back({"Other commands", std::move(rest)});
  return found;
}

}  // namespace command_line
