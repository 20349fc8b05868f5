#include "preferences/commands/live_settings_commands.h"

#include <memory>
#include <string>

#include "preferences/commands/scaling_choice.h"
#include "preferences/location_names.h"
#include "settings/settings_store.h"

namespace preferences {
namespace {

using command_line::addChoice;
using command_line::addCommand;
using command_line::Context;
using command_line::numberUpTo;
using lumora::nameOf;
using lumora::WallpaperMode;

// The command of a setting that each location has.
struct LiveSettingCommand {
  LiveSetting setting;
  const char* command;
  const char* description;
  // The command's second argument.
  const char* valueName;
  const char* valueDescription;
};

constexpr LiveSettingCommand speed = {
    .setting = LiveSetting::Speed,
    .command = "speed",
    .description = "play faster or slower",
    .valueName = "FACTOR",
    .valueDescription = "1 is normal, 0 freezes the GIF; at most 1000"};
constexpr LiveSettingCommand alpha = {
    .setting = LiveSetting::Alpha,
    .command = "alpha",
    .description = "let the still wallpaper behind the GIF show through",
    .valueName = "OPACITY",
    .valueDescription = "from 0, invisible, to 1, opaque"};
constexpr LiveSettingCommand scaling = {
    .setting = LiveSetting::Scaling,
    .command = "scaling",
    .description = "choose how the GIF fills the screen",
    .valueName = "MODE",
    .valueDescription =
        "FIT (or contain) shows the whole GIF, FILL (or cover) fills the screen "
        "with a part of it, FULLSCREEN (or stretch) distorts it"};

struct LiveSettingOptions {
  std::string location;
  std::string value;
};

void addModeCommand(CLI::App& lumora, Context& context, const DeviceActions& device) {
  auto mode = std::make_shared<std::string>();
  auto* command = addCommand(
      lumora, context, "mode", "use one wallpaper for both screens, or one each", [device, mode] {
        const bool isShared = *mode == nameOf(WallpaperMode::Shared);
        device.changeMode(changeOfMode(isShared ? WallpaperMode::Shared : WallpaperMode::Separate));
      });
  addChoice(command, "MODE", *mode,
            {nameOf(WallpaperMode::Shared), nameOf(WallpaperMode::Separate)},
            "one wallpaper for both screens, or one for each");
}

void addDockCommand(CLI::App& lumora, Context& context, const DeviceActions& device) {
  auto state = std::make_shared<std::string>();
  auto* command = addCommand(lumora, context, "dock", "let the wallpaper end at the dock, or not",
                             [device, state] { device.makeOnPhone(changeOfDock(*state == "on")); });
  addChoice(command, "STATE", *state, {"on", "off"},
            "on: end the wallpaper at the dock; off: fill the screen");
}

// Declares the command of a setting. Returns the value's argument, to which the caller adds a
// check.
CLI::Option* addLiveSetting(CLI::App& lumora, Context& context, const DeviceActions& device,
                            const LiveSettingCommand& declared, std::vector<CLI::App*>& commands) {
  auto options = std::make_shared<LiveSettingOptions>();
  auto* command = addCommand(lumora, context, declared.command, declared.description, [=] {
    device.make(changeOf(declared.setting, locationNamed(options->location), options->value));
  });
  commands.push_back(command);
  addChoice(command, "LOCATION", options->location, locationNames, "wallpaper to change");
  return command->add_option(declared.valueName, options->value, declared.valueDescription)
      ->required();
}

}  // namespace

std::vector<CLI::App*> addLiveSettingsCommands(CLI::App& lumora, Context& context,
                                               const DeviceActions& device) {
  addModeCommand(lumora, context, device);
  addDockCommand(lumora, context, device);
  constexpr long maxSpeed = 1000;
  std::vector<CLI::App*> commands;
  addLiveSetting(lumora, context, device, speed, commands)->check(numberUpTo(maxSpeed));
  addLiveSetting(lumora, context, device, alpha, commands)->check(numberUpTo(1));
  acceptScaling(addLiveSetting(lumora, context, device, scaling, commands));
  return commands;
}

}  // namespace preferences
