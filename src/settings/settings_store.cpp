#include "settings/settings_store.h"

#include <algorithm>
#include <optional>

#include "platform/file_manager.h"
#include "platform/property_list.h"
#include "platform/string_value.h"
#include "settings/device_paths.h"
#include "settings/scaling.h"

namespace lumora {
namespace {

using platform::NSMutableDictionary;

std::optional<std::string> storedText(const char* key) {
  if (!platform::fileExistsAtPath(settingsPath)) return std::nullopt;
  auto settings = NSMutableDictionary::dictionaryWithContentsOfFile(settingsPath);
  return settings ? settings->stringForKey(key) : std::nullopt;
}

template <typename Value>
Value converted(const char* key, Value (*conversion)(const std::string&), Value otherwise) {
  const auto text = storedText(key);
  return text && !text->empty() ? conversion(*text) : otherwise;
}

bool readBoolean(const char* key, bool otherwise) {
  return converted(key, platform::boolValue, otherwise);
}

std::int32_t readInteger(const char* key, std::int32_t otherwise) {
  return converted(key, platform::intValue, otherwise);
}

float readNumber(const char* key, float otherwise) {
  return converted(key, platform::floatValue, otherwise);
}

platform::CGFloat readLength(const char* key, float otherwise) {
  return readNumber(key, otherwise);
}

std::string readText(const char* key, const char* otherwise) {
  return storedText(key).value_or(otherwise);
}

std::string readScalingMode(const char* key, const char* otherwise) {
  const std::string mode = readText(key, otherwise);
  const bool isKnown = std::any_of(scalings.begin(), scalings.end(),
                                   [&mode](const Scaling& each) { return mode == each.name; });
  return isKnown ? mode : otherwise;
}

}  // namespace

#define SETTING(type, getter, key, otherwise) \
  setting_types::type getter() {              \
    return read##type(key, otherwise);        \
  }
#include "settings/settings.def"

WallpaperMode modeWithIndex(std::int32_t index) {
  if (index == static_cast<std::int32_t>(WallpaperMode::Separate)) return WallpaperMode::Separate;
  if (index == static_cast<std::int32_t>(WallpaperMode::Shared)) return WallpaperMode::Shared;
  return WallpaperMode::None;
}

WallpaperMode wallpaperMode() {
  return modeWithIndex(getModeIndex());
}

void setPreferencesObjectKey(const std::string& object, const std::string& key) {
  auto settings = NSMutableDictionary::dictionaryWithContentsOfFile(settingsPath);
  if (!settings) settings.emplace();
  settings->setString(object, key);
  settings->writeToFile(settingsPath);
}

}  // namespace lumora
