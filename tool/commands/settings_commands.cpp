#include "tool/commands/settings_commands.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "settings/settings_store.h"
#include "tool/device/stored_settings.h"
#include "tool/support/failure.h"
#include "tool/support/terminal.h"

namespace tool {
namespace {

using nlohmann::ordered_json;

// JSON has no infinite numbers: the largest finite one stands for them.
template <typename Number>
Number finite(Number value) {
  return std::clamp(value, std::numeric_limits<Number>::lowest(),
                    std::numeric_limits<Number>::max());
}

// Every key with the value that its getter gives.
ordered_json allSettings() {
  using namespace lumora;
  return {
      {"ENABLED", getEnabled()},
      {"WALLPAPER_SET", getWallpaperSet()},
      {"SHARED_WALLPAPER_SET", getSharedWallpaperSet()},
      {"LOCKSCREEN_WALLPAPER_SET", getLockscreenWallpaperSet()},
      {"HOMESCREEN_WALLPAPER_SET", getHomescreenWallpaperSet()},
      {"MODE_INDEX", getModeIndex()},
      {"LOCATION_INDEX", getLocationIndex()},
      {"SHARED_GIF_SPEED", finite(getSharedGIFSpeed())},
      {"LOCKSCREEN_GIF_SPEED", finite(getLockscreenGIFSpeed())},
      {"HOMESCREEN_GIF_SPEED", finite(getHomescreenGIFSpeed())},
      {"SHARED_GIF_ALPHA", finite(getSharedGIFAlpha())},
      {"LOCKSCREEN_GIF_ALPHA", finite(getLockscreenGIFAlpha())},
      {"HOMESCREEN_GIF_ALPHA", finite(getHomescreenGIFAlpha())},
      {"SHARED_GIF_BLUR", finite(getSharedGIFBlur())},
      {"LOCKSCREEN_GIF_BLUR", finite(getLockscreenGIFBlur())},
      {"HOMESCREEN_GIF_BLUR", finite(getHomescreenGIFBlur())},
      {"SHARED_SCALING_MODE", getSharedScalingMode()},
      {"LOCKSCREEN_SCALING_MODE", getLockscreenScalingMode()},
      {"HOMESCREEN_SCALING_MODE", getHomescreenScalingMode()},
      {"DOCK_ENABLED", getDockEnabled()},
      {"DOCK_HEIGHT", finite(getDockHeight())},
      {"SAFARI_DIRECTORY", getSafariSavePath()},
      {"SAFARI_OBJECT_URL", getSafariObjectURL()},
      {"SHARED_TEXT_FIELD_TEXT", getSharedTextFieldText()},
      {"LOCKSCREEN_TEXT_FIELD_TEXT", getLockscreenTextFieldText()},
      {"HOMESCREEN_TEXT_FIELD_TEXT", getHomescreenTextFieldText()},
  };
}

std::string dumped(const ordered_json& json, int indent = -1) {
  return json.dump(indent, ' ', false, ordered_json::error_handler_t::replace);
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
  if (!value) throw Failure(key + " is not set; `lumora settings` shows what applies instead");
  std::printf("%s\n", printable(*value, STDOUT_FILENO).c_str());
}

void addRawCommands(CLI::App& lumora, Context& context) {
  struct Words {
    std::string key;
    std::string value;
    bool asJson = false;
  };
  auto words = std::make_shared<Words>();
  auto* get =
      addCommand(lumora, context, "get", "print a setting as it is stored", [&context, words] {
        context.device();
        printSetting(words->key);
      });
  get->add_option("KEY", words->key)->required();
  auto* put =
      addCommand(lumora, context, "put", "store a setting as it is given", [&context, words] {
        context.device();
        storeSetting(words->key, words->value);
      });
  put->add_option("KEY", words->key)->required()->check([](const std::string& key) {
    return key.empty() ? std::string("must not be empty") : std::string();
  });
  put->add_option("VALUE", words->value)->required();
  auto* all = addCommand(lumora, context, "settings", "print every setting that applies",
                         [&context, words] {
                           context.device();
                           printSettings(words->asJson);
                         });
  all->add_flag("--json", words->asJson, "as one JSON object");
}

void addSwitches(CLI::App& lumora, Context& context) {
  auto store = [&context](const char* key, const char* value) {
    return [&context, key, value] {
      context.device();
      storeSetting(key, value);
    };
  };
  addCommand(lumora, context, "enable", "switch the extension on", store("ENABLED", "TRUE"));
  addCommand(lumora, context, "disable", "switch the extension off", store("ENABLED", "FALSE"));
  auto state = std::make_shared<std::string>();
  auto* dock = addCommand(lumora, context, "dock", "keep the wallpaper clear of the dock, or not",
                          [&context, state] {
                            context.device();
                            storeSetting("DOCK_ENABLED", *state == "on" ? "TRUE" : "FALSE");
                          });
  addChoice(dock, "STATE", *state, {"on", "off"});
}

}  // namespace

void addSettingsCommands(CLI::App& lumora, Context& context) {
  addRawCommands(lumora, context);
  addSwitches(lumora, context);
}

}  // namespace tool
