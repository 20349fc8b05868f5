#include "tool/commands/live_settings_commands.h"

#include <map>
#include <memory>

#include "settings/notification_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/stored_settings.h"

namespace tool {
namespace {

// A setting that each location has.
struct LiveSetting {
  const char* command;
  const char* description;
  // Follows the location's identifier in the settings file.
  const char* key;
  // Makes a running home screen read the setting again.
  const char* notification;
};

constexpr LiveSetting speed = {"speed", "set the playback speed", "_GIF_SPEED",
                               lumora::speedNeedsUpdatingNotification};
constexpr LiveSetting alpha = {"alpha", "set the opacity", "_GIF_ALPHA",
                               lumora::alphaNeedsUpdatingNotification};
constexpr LiveSetting scaling = {"scaling", "set how the GIF fills the screen", "_SCALING_MODE",
                                 lumora::control::updateWallpaper};

// The scaling modes as other wallpaper programs call them.
const std::map<std::string, std::string> namesElsewhere = {
    {"contain", "FIT"}, {"cover", "FILL"}, {"stretch", "FULLSCREEN"}};

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

void addModeCommand(CLI::App& lumora, Context& context) {
  auto mode = std::make_shared<std::string>();
  auto* command = addCommand(
      lumora, context, "mode", "use one wallpaper for both screens, or one each", [&context, mode] {
        const DeviceFolder device = context.device();
        const FileLock lock = lockOutImports(device);
        storeSetting("MODE_INDEX", *mode == "shared" ? "1" : "0");
        notify(device, {lumora::removeUnneededViewNotification, lumora::control::updateAnimating});
      });
  addChoice(command, "MODE", *mode, {"shared", "separate"},
            "one wallpaper for both screens, or one for each");
}

void addDockCommand(CLI::App& lumora, Context& context) {
  auto state = std::make_shared<std::string>();
  auto* command =
      addCommand(lumora, context, "dock", "choose where the wallpaper ends", [&context, state] {
        const DeviceFolder device = context.device();
        storeSetting("DOCK_ENABLED", *state == "on" ? "TRUE" : "FALSE");
        notify(device, {lumora::control::updateWallpaper});
      });
  addChoice(command, "STATE", *state, {"on", "off"},
            "on: end the wallpaper at the dock; off: fill the screen");
}

// Declares the command of a setting with the argument LOCATION. The caller adds the value.
CLI::App* addLiveSetting(CLI::App& lumora, Context& context, const LiveSetting& setting,
                         const std::shared_ptr<LiveSettingOptions>& options) {
  auto* command = addCommand(lumora, context, setting.command, setting.description, [=, &context] {
    const DeviceFolder device = context.device();
    storeSettingOf(locationNamed(options->location), setting.key, options->value);
    notify(device, {setting.notification});
  });
  addChoice(command, "LOCATION", options->location, locationNames, "wallpaper to change");
  return command;
}

void addNumber(CLI::App& lumora, Context& context, const LiveSetting& setting, const char* name,
               const char* description, long largest) {
  auto options = std::make_shared<LiveSettingOptions>();
  addLiveSetting(lumora, context, setting, options)
      ->add_option(name, options->value, description)
      ->required()
      ->check(numberUpTo(largest));
}

}  // namespace

void addLiveSettingsCommands(CLI::App& lumora, Context& context) {
  addModeCommand(lumora, context);
  addDockCommand(lumora, context);
  constexpr long maxSpeed = 1000;
  addNumber(lumora, context, speed, "FACTOR", "1 is normal speed, 0 freezes the GIF", maxSpeed);
  addNumber(lumora, context, alpha, "OPACITY", "from 0, invisible, to 1, opaque", 1);
  auto options = std::make_shared<LiveSettingOptions>();
  auto* command = addLiveSetting(lumora, context, scaling, options);
  addChoice(command, "MODE", options->value, {"FIT", "FILL", "FULLSCREEN"},
            "show the whole GIF, fill the screen with a part of it, or stretch it")
      ->transform(CLI::Transformer(namesElsewhere, CLI::ignore_case).description(""));
}

}  // namespace tool
