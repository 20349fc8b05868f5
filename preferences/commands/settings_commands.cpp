#include "preferences/commands/settings_commands.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <type_traits>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "command_line/failure.h"
#include "command_line/json_text.h"
#include "command_line/terminal.h"
#include "preferences/changes.h"
#include "preferences/stored_settings.h"
#include "settings/settings_store.h"

namespace preferences {

using command_line::addCommand;
using command_line::Context;
using command_line::dumped;
using command_line::Failure;
using command_line::printable;

namespace {

using nlohmann::ordered_json;

// JSON has no infinite numbers, so they become the largest finite one.
template <typename Value>
ordered_json shown(const Value& value) {
  if constexpr (std::is_floating_point_v<Value>) {
    return std::clamp(value, std::numeric_limits<Value>::lowest(),
                      std::numeric_limits<Value>::max());
  } else {
    return value;
  }
}

// Returns every key with the value that the library uses.
ordered_json allSettings() {
  ordered_json settings;
#define SETTING(type, getter, key, otherwise) settings[key] = shown(lumora::getter());
#include "settings/settings.def"
  return settings;
}

void printSettings(bool asJson) {
  const ordered_json settings = allSettings();
  if (asJson) {
    std::printf("%s\n", dumped(settings, 2).c_str());
    return;
  }
  for (const auto& [key, value] : settings.items()) {
    const std::string text = value.is_string() ? value.get<std::string>() : dumped(value);
    std::printf("%-28s %s\n", key.c_str(), printable(text, STDOUT_FILENO).c_str());
  }
}

void printSetting(const std::string& key) {
  const auto value = storedSetting(key);
  if (!value) throw Failure(key + " is not set; `lumora settings` prints the value that applies");
  std::printf("%s\n", printable(*value, STDOUT_FILENO).c_str());
}

struct RawSetting {
  std::string key;
  std::string value;
};

void addRawCommands(CLI::App& lumora, Context& context, const DeviceActions& device) {
  auto setting = std::make_shared<RawSetting>();
  auto* get = addCommand(lumora, context, "get", "print one setting as stored", [device, setting] {
    device.open();
    printSetting(setting->key);
  });
  get->add_option("KEY", setting->key, "key as `lumora settings` lists it")->required();
  auto* put =
      addCommand(lumora, context, "put", "store a setting without checking it", [device, setting] {
        device.openToChange();
        storeSetting(setting->key, setting->value);
      });
  put->add_option("KEY", setting->key, "key as `lumora settings` lists it")
      ->required()
      ->check([](const std::string& key) {
        return key.empty() ? std::string("must not be empty") : std::string();
      });
  put->add_option("VALUE", setting->value, "text to store")->required();
}

CLI::App* addListCommand(CLI::App& lumora, Context& context, const DeviceActions& device) {
  auto asJson = std::make_shared<bool>(false);
  auto* all =
      addCommand(lumora, context, "settings",
                 "print all settings, with defaults for those not stored", [device, asJson] {
                   device.open();
                   printSettings(*asJson);
                 });
  all->add_flag("--json", *asJson, "print one JSON object");
  return all;
}

void addSwitches(CLI::App& lumora, Context& context, const DeviceActions& device) {
  addCommand(lumora, context, "enable", "let wallpapers be animated", [device] {
    device.openToChange();
    store(changeOfEnabled(true));
  });
  addCommand(lumora, context, "disable", "do not animate wallpapers from now on", [device] {
    device.openToChange();
    store(changeOfEnabled(false));
    std::printf("disabled; a wallpaper that is playing continues\n");
  });
}

}  // namespace

CLI::App* addSettingsCommands(CLI::App& lumora, Context& context, const DeviceActions& device) {
  addRawCommands(lumora, context, device);
  addSwitches(lumora, context, device);
  return addListCommand(lumora, context, device);
}

}  // namespace preferences
