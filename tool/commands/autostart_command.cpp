#include "tool/commands/autostart_command.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "tool/device/autostart.h"

namespace tool {
namespace {

// These compositors start nothing by themselves.
bool needsLineInConfiguration() {
  return std::getenv("SWAYSOCK") != nullptr ||
         std::getenv("HYPRLAND_INSTANCE_SIGNATURE") != nullptr;
}

void turnOn(const Context& context) {
  // The session at login may have another environment.
  const std::string program = std::filesystem::read_symlink("/proc/self/exe");
  const std::vector<std::string> command{program, "run", "--restore", "--root",
                                         context.device().path()};
  const auto files = writeAutostart(command);
  std::printf(
      "the wallpaper will start at login with the options of the last run on a desktop; "
      "written:\n");
  for (const auto& file : files) std::printf("  %s\n", file.c_str());
  if (needsLineInConfiguration()) {
    std::printf(
        "sway and Hyprland do not read these; add to their configuration, unless it includes\n"
        "/etc/sway/config.d/*:\n"
        "  exec lumora autostart start          (sway)\n"
        "  exec-once = lumora autostart start   (Hyprland)\n");
  }
}

void printState() {
  const auto files = autostartFiles();
  std::printf(files.empty() ? "off\n" : "on\n");
  for (const auto& file : files) std::printf("  %s\n", file.c_str());
}

// For compositors that do not read the files.
int start(const Context& context) {
  if (autostartFiles().empty()) return 0;
  std::vector<std::string> words{"run", "--restore", "--background"};
  if (!context.root.empty()) words.insert(words.end(), {"--root", context.root});
  return context.performLine(words);
}

}  // namespace

void addAutostartCommand(CLI::App& lumora, Context& context) {
  auto action = std::make_shared<std::string>();
  auto* command = lumora.add_subcommand("autostart", "start the wallpaper of the desktop at login");
  addChoice(command, "ACTION", *action, {"on", "off", "status", "start"},
            "start: start it now if autostart is on, for the configuration of sway or Hyprland");
  command->callback([&context, action] {
    context.action = [&context, action] {
      if (*action == "start") return start(context);
      if (*action == "on") turnOn(context);
      if (*action == "off") removeAutostart();
      if (*action == "status") printState();
      return 0;
    };
  });
}

}  // namespace tool
