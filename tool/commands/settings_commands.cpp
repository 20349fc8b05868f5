#include "tool/commands/settings_commands.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <type_traits>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "preferences/changes.h"
#include "preferences/stored_settings.h"
#include "settings/settings_store.h"
#include "tool/support/failure.h"
#include "tool/support/json_text.h"
#include "tool/support/terminal.h"

namespace tool {
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
  const auto value = preferences::storedSetting(key);
  if (!value) throw Failure(key + " is not set; `lumora settings` prints the value that applies");
  std::printf("%s\n", printable(*value, STDOUT_FILENO).c_str());
}

struct RawSetting {
  std::string key;
  std::string value;
};

void addRawCommands(CLI::App& lumora, Context& context) {
  auto setting = std::make_shared<RawSetting>();
  auto* get =
      addCommand(lumora, context, "get", "print one setting as stored", [&context, setting] {
        const DeviceFolder device = context.device();
        printSetting(setting->key);
      });
  get->add_option("KEY", setting->key, "key as `lumora settings` lists it")->required();
  auto* put = addCommand(lumora, context, "put", "store a setting without checking it",
                         [&context, setting] {
                           const DeviceFolder device = context.madeDevice();
                           preferences::storeSetting(setting->key, setting->value);
                         });
  put->add_option("KEY", setting->key, "key as `lumora settings` lists it")
      ->required()
      ->check([](const std::string& key) {
        return key.empty() ? std::string("must not be empty") : std::string();
      });
  put->add_option("VALUE", setting->value, "text to store")->required();
  auto asJson = std::make_shared<bool>(false);
  auto* all =
      addCommand(lumora, context, "settings",
                 "print all settings, with defaults for those not stored", [&context, asJson] {
                   const DeviceFolder device = context.device();
                   printSettings(*asJson);
                 });
  all->add_flag("--json", *asJson, "print one JSON object");
  addOutput(all, context.output);
}

void addSwitches(CLI::App& lumora, Context& context) {
  addCommand(lumora, context, "enable", "let wallpapers be animated", [&context] {
    const DeviceFolder device = context.madeDevice();
    store(preferences::changeOfEnabled(true));
  });
  addCommand(lumora, context, "disable", "do not animate wallpapers from now on", [&context] {
    const DeviceFolder device = context.madeDevice();
    store(preferences::changeOfEnabled(false));
    std::printf("disabled; a wallpaper that is playing continues\n");
  });
}

}  // namespace

void addSettingsCommands(CLI::App& lumora, Context& context) {
  addRawCommands(lumora, context);
  addSwitches(lumora, context);
}

}  // namespace tool
