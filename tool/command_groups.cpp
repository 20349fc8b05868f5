#include "tool/command_groups.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tool {
namespace {

struct Names {
  const char* group;
  std::vector<std::string_view> commands;
};

// What a newcomer needs comes first.
const std::array<Names, 6> groups{{
    {"Wallpaper", {"run", "set", "remove", "status", "stop", "forget", "help"}},
    {"Look", {"scaling", "speed", "alpha", "blur"}},
    {"Desktop", {"pause", "resume", "toggle", "backdrop", "outputs", "autostart"}},
    {"Simulated phone",
     {"mode", "dock", "lock", "unlock", "home", "app", "screen", "rotate", "screenshot", "record"}},
    {"Settings", {"settings", "get", "put", "enable", "disable"}},
    {"For developers",
     {"wait", "play", "advance", "views", "trace", "watch", "post", "frames", "bus"}},
}};

}  // namespace

std::vector<CommandGroup> groupsOf(const CLI::App& lumora) {
  std::vector<const CLI::App*> rest = lumora.get_subcommands({});
  std::vector<CommandGroup> found;
  for (const Names& names : groups) {
    CommandGroup group{names.group, {}};
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

}  // namespace tool
