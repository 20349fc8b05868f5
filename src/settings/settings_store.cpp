#include "settings/settings_store.h"

#include <optional>

#include "platform/file_manager.h"
#include "platform/property_list.h"
#include "platform/string_value.h"
#include "settings/device_paths.h"

namespace lumora {
namespace {

using platform::NSMutableDictionary;

// The stored text, as it is.
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

bool boolSetting(const char* key, bool otherwise) {
  return converted(key, platform::boolValue, otherwise);
}

std::int32_t intSetting(const char* key, std::int32_t otherwise) {
  return converted(key, platform::intValue, otherwise);
}

float floatSetting(const char* key, float otherwise) {
  return converted(key, platform::floatValue, otherwise);
}

std::string textSetting(const char* key, const char* otherwise) {
  return storedText(key).value_or(otherwise);
}

std::string modeSetting(const char* key, const char* otherwise) {
  const std::string mode = textSetting(key, otherwise);
  return mode == "FIT" || mode == "FILL" || mode == "FULLSCREEN" ? mode : otherwise;
}

template <typename Value>
Value ofLocation(ScreenLocation location, Value (*shared)(), Value (*lockScreen)(),
                 Value (*homeScreen)(), Value otherwise) {
  switch (location) {
    case ScreenLocation::Shared:
      return shared();
    case ScreenLocation::LockScreen:
      return lockScreen();
    case ScreenLocation::HomeScreen:
      return homeScreen();
    case ScreenLocation::Unknown:
      break;
  }
  return otherwise;
}

}  // namespace

// clang-format off
bool getEnabled()                          { return boolSetting("ENABLED", true); }
bool getWallpaperSet()                     { return boolSetting("WALLPAPER_SET", false); }
bool getSharedWallpaperSet()               { return boolSetting("SHARED_WALLPAPER_SET", false); }
bool getLockscreenWallpaperSet()           { return boolSetting("LOCKSCREEN_WALLPAPER_SET", false); }
bool getHomescreenWallpaperSet()           { return boolSetting("HOMESCREEN_WALLPAPER_SET", false); }
std::int32_t getModeIndex()                { return intSetting("MODE_INDEX", 1); }
std::int32_t getLocationIndex()            { return intSetting("LOCATION_INDEX", 0); }
float getSharedGIFSpeed()                  { return floatSetting("SHARED_GIF_SPEED", 1.0F); }
float getLockscreenGIFSpeed()              { return floatSetting("LOCKSCREEN_GIF_SPEED", 1.0F); }
float getHomescreenGIFSpeed()              { return floatSetting("HOMESCREEN_GIF_SPEED", 1.0F); }
float getSharedGIFAlpha()                  { return floatSetting("SHARED_GIF_ALPHA", 1.0F); }
float getLockscreenGIFAlpha()              { return floatSetting("LOCKSCREEN_GIF_ALPHA", 1.0F); }
float getHomescreenGIFAlpha()              { return floatSetting("HOMESCREEN_GIF_ALPHA", 1.0F); }
float getSharedGIFBlur()                   { return floatSetting("SHARED_GIF_BLUR", 0.0F); }
float getLockscreenGIFBlur()               { return floatSetting("LOCKSCREEN_GIF_BLUR", 0.0F); }
float getHomescreenGIFBlur()               { return floatSetting("HOMESCREEN_GIF_BLUR", 0.0F); }
std::string getSharedScalingMode()         { return modeSetting("SHARED_SCALING_MODE", "FIT"); }
std::string getLockscreenScalingMode()     { return modeSetting("LOCKSCREEN_SCALING_MODE", "FIT"); }
std::string getHomescreenScalingMode()     { return modeSetting("HOMESCREEN_SCALING_MODE", "FIT"); }
bool getDockEnabled()                      { return boolSetting("DOCK_ENABLED", true); }
platform::CGFloat getDockHeight()          { return floatSetting("DOCK_HEIGHT", 0.0F); }
std::string getSafariSavePath()            { return textSetting("SAFARI_DIRECTORY", ""); }
std::string getSafariObjectURL()           { return textSetting("SAFARI_OBJECT_URL", ""); }
std::string getSharedTextFieldText()       { return textSetting("SHARED_TEXT_FIELD_TEXT", ""); }
std::string getLockscreenTextFieldText()   { return textSetting("LOCKSCREEN_TEXT_FIELD_TEXT", ""); }
std::string getHomescreenTextFieldText()   { return textSetting("HOMESCREEN_TEXT_FIELD_TEXT", ""); }
// clang-format on

float getGIFSpeed(ScreenLocation location) {
  return ofLocation(location, getSharedGIFSpeed, getLockscreenGIFSpeed, getHomescreenGIFSpeed,
                    1.0F);
}

float getGIFAlpha(ScreenLocation location) {
  return ofLocation(location, getSharedGIFAlpha, getLockscreenGIFAlpha, getHomescreenGIFAlpha,
                    1.0F);
}

float getGIFBlur(ScreenLocation location) {
  return ofLocation(location, getSharedGIFBlur, getLockscreenGIFBlur, getHomescreenGIFBlur, 0.0F);
}

void setPreferencesObjectKey(const std::string& object, const std::string& key) {
  auto settings = NSMutableDictionary::dictionaryWithContentsOfFile(settingsPath);
  if (!settings) settings.emplace();
  settings->setString(object, key);
  settings->writeToFile(settingsPath);
}

}  // namespace lumora
