#include "tool/commands/live_settings_commands.h"

#include <memory>

#include "preferences/changes.h"
#include "settings/settings_store.h"
#include "tool/commands/scaling_choice.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/device/wallpaper_names.h"

namespace tool {
namespace {

using lumora::nameOf;
using lumora::WallpaperMode;
using preferences::Change;
using preferences::LiveSetting;

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

// Makes the change. If a home screen is running, waits until it has followed.
void make(const DeviceFolder& device, const Change& change) {
  store(change);
  auto host = HostConnection::find(device);
  if (!host) return;
  for (const char* name : change.notifications) host->post(name);
  host->settle();
}

void requirePhone(const DeviceFolder& device) {
  if (auto host = HostConnection::find(device)) host->requirePhone();
}

void addModeCommand(CLI::App& lumora, Context& context) {
  auto mode = std::make_shared<std::string>();
  auto* command = addCommand(
      lumora, context, "mode", "use one wallpaper for both screens, or one each", [&context, mode] {
        const DeviceFolder device = context.madeDevice();
        requirePhone(device);
        const FileLock lock = lockOutImports(device);
        const bool isShared = *mode == nameOf(WallpaperMode::Shared);
        const auto chosen = isShared ? WallpaperMode::Shared : WallpaperMode::Separate;
        make(device, preferences::changeOfMode(chosen));
        if (auto host = HostConnection::find(device)) tellWallpaperName(*host, device);
      });
  addChoice(command, "MODE", *mode,
            {nameOf(WallpaperMode::Shared), nameOf(WallpaperMode::Separate)},
            "one wallpaper for both screens, or one for each");
}

void addDockCommand(CLI::App& lumora, Context& context) {
  auto state = std::make_shared<std::string>();
  auto* command = addCommand(lumora, context, "dock", "let the wallpaper end at the dock, or not",
                             [&context, state] {
                               const DeviceFolder device = context.madeDevice();
                               requirePhone(device);
                               make(device, preferences::changeOfDock(*state == "on"));
                             });
  addChoice(command, "STATE", *state, {"on", "off"},
            "on: end the wallpaper at the dock; off: fill the screen");
}

// Declares the command of a setting. Returns the value's argument, to which the caller adds a
// check.
CLI::Option* addLiveSetting(CLI::App& lumora, Context& context,
                            const LiveSettingCommand& declared) {
  auto options = std::make_shared<LiveSettingOptions>();
  auto* command =
      addCommand(lumora, context, declared.command, declared.description, [=, &context] {
        const DeviceFolder device = context.madeDevice();
        const lumora::Location& location = locationNamed(options->location);
        make(device, preferences::changeOf(declared.setting, location, options->value));
      });
  addChoice(command, "LOCATION", options->location, locationNames, "wallpaper to change");
  addOutput(command, context.output);
  return command->add_option(declared.valueName, options->value, declared.valueDescription)
      ->required();
}

}  // namespace

void addLiveSettingsCommands(CLI::App& lumora, Context& context) {
  addModeCommand(lumora, context);
  addDockCommand(lumora, context);
  constexpr long maxSpeed = 1000;
  addLiveSetting(lumora, context, speed)->check(numberUpTo(maxSpeed));
  addLiveSetting(lumora, context, alpha)->check(numberUpTo(1));
  acceptScaling(addLiveSetting(lumora, context, scaling));
}

}  // namespace tool
