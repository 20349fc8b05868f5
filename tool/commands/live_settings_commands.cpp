#include "tool/commands/live_settings_commands.h"

#include <memory>

#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "tool/commands/scaling_choice.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/device/stored_settings.h"
#include "tool/device/wallpaper_names.h"

namespace tool {
namespace {

using lumora::nameOf;
using lumora::WallpaperMode;

// A setting that each location has.
struct LiveSetting {
  const char* command;
  const char* description;
  // Follows the location's identifier in the settings file.
  const char* key;
  // Makes a running home screen read the setting again.
  const char* notification;
  // The command's second argument.
  const char* valueName;
  const char* valueDescription;
};

constexpr LiveSetting speed = {.command = "speed",
                               .description = "play faster or slower",
                               .key = "_GIF_SPEED",
                               .notification = lumora::speedNeedsUpdatingNotification,
                               .valueName = "FACTOR",
                               .valueDescription = "1 is normal, 0 freezes the GIF; at most 1000"};
constexpr LiveSetting alpha = {.command = "alpha",
                               .description = "let the still wallpaper behind the GIF show through",
                               .key = "_GIF_ALPHA",
                               .notification = lumora::alphaNeedsUpdatingNotification,
                               .valueName = "OPACITY",
                               .valueDescription = "from 0, invisible, to 1, opaque"};
constexpr LiveSetting scaling = {
    .command = "scaling",
    .description = "choose how the GIF fills the screen",
    .key = "_SCALING_MODE",
    .notification = lumora::control::updateWallpaper,
    .valueName = "MODE",
    .valueDescription =
        "FIT (or contain) shows the whole GIF, FILL (or cover) fills the screen "
        "with a part of it, FULLSCREEN (or stretch) distorts it"};

struct LiveSettingOptions {
  std::string location;
  std::string value;
};

// Posts these notifications to the home screen and waits until it is idle; does nothing if none is
// running.
void notify(const DeviceFolder& device, std::initializer_list<const char*> names) {
  auto host = HostConnection::find(device);
  if (!host) return;
  for (const char* name : names) host->post(name);
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
        storeSetting("MODE_INDEX", std::to_string(static_cast<int>(chosen)));
        notify(device, {lumora::removeUnneededViewNotification, lumora::control::updateAnimating});
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
                               storeSetting("DOCK_ENABLED", *state == "on" ? "TRUE" : "FALSE");
                               notify(device, {lumora::control::updateWallpaper});
                             });
  addChoice(command, "STATE", *state, {"on", "off"},
            "on: end the wallpaper at the dock; off: fill the screen");
}

// Declares the command of a setting. Returns the value's argument, to which the caller adds a
// check.
CLI::Option* addLiveSetting(CLI::App& lumora, Context& context, const LiveSetting& setting) {
  auto options = std::make_shared<LiveSettingOptions>();
  auto* command = addCommand(lumora, context, setting.command, setting.description, [=, &context] {
    const DeviceFolder device = context.madeDevice();
    storeSettingOf(locationNamed(options->location), setting.key, options->value);
    notify(device, {setting.notification});
  });
  addChoice(command, "LOCATION", options->location, locationNames, "wallpaper to change");
  addOutput(command, context.output);
  return command->add_option(setting.valueName, options->value, setting.valueDescription)
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
