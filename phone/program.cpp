#include "phone/program.h"

#include <map>
#include <memory>
#include <utility>

#include "command_line/parser.h"
#include "phone/blur_command.h"
#include "phone/command_lock.h"
#include "phone/file_owner.h"
#include "phone/home_screen.h"
#include "phone/notification_commands.h"
#include "phone/remove_command.h"
#include "phone/set_command.h"
#include "phone/status_command.h"
#include "preferences/commands/live_settings_commands.h"
#include "preferences/commands/settings_commands.h"

namespace phone {
namespace {

using command_line::Program;

std::vector<std::string> examplesOf(const std::string& command) {
  static const std::map<std::string, std::vector<std::string>> examples{
      {"set", {"lumora set cat.gif", "lumora set lockscreen rain.gif --keep-other"}},
      {"remove", {"lumora remove lockscreen", "lumora remove all --forget"}},
      {"scaling", {"lumora scaling shared fill"}},
      {"speed", {"lumora speed shared 0.5"}},
      {"alpha", {"lumora alpha homescreen 0.8"}},
      {"blur", {"lumora blur homescreen 6"}},
      {"mode", {"lumora mode separate"}},
      {"get", {"lumora get SHARED_SCALING_MODE"}},
      {"put", {"lumora put DOCK_HEIGHT 96"}},
  };
  const auto found = examples.find(command);
  return found == examples.end() ? std::vector<std::string>() : found->second;
}

const Program& theProgram() {
  static const Program program{
      .name = "lumora",
      .purpose = "Chooses and adjusts the animated wallpapers of this phone.",
      .version = "lumora " LUMORA_VERSION,
      .more = "More: lumora COMMAND --help, /usr/share/doc/com.brightfen.lumora/help.txt",
      .groups =
          {
              {"Wallpaper", {"set", "remove", "status", "help"}},
              {"Look", {"scaling", "speed", "alpha", "blur", "dock", "mode"}},
              {"Settings", {"settings", "get", "put", "enable", "disable"}},
              {"For developers", {"watch", "post"}},
          },
      .examplesOf = examplesOf,
  };
  return program;
}

void makeAsOwner(const preferences::Change& change) {
  workAsOwner();
  make(change);
}

// An import changes the mode, too.
void changeMode(const preferences::Change& change) {
  workAsOwner();
  const CommandLock lock(patience);
  make(change);
}

}  // namespace

int performLine(std::vector<std::string> words) {
  CLI::App lumora;
  const auto context = std::make_shared<command_line::Context>();
  declare(lumora, *context, theProgram());
  addSetCommand(lumora, *context);
  addRemoveCommand(lumora, *context);
  addStatusCommand(lumora, *context);
  addBlurCommand(lumora, *context);
  const preferences::DeviceActions device{.open = workAsOwner,
                                          .openToChange = workAsOwner,
                                          .make = makeAsOwner,
                                          .makeOnPhone = makeAsOwner,
                                          .changeMode = changeMode};
  addLiveSettingsCommands(lumora, *context, device);
  addSettingsCommands(lumora, *context, device);
  addNotificationCommands(lumora, *context);
  return command_line::parse(lumora, context, std::move(words))();
}

}  // namespace phone
