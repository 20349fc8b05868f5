#include "tool/stored_settings.h"

#include "platform/property_list.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"
#include "tool/failure.h"

namespace tool {

void storeSetting(const std::string& key, const std::string& value) {
  lumora::setPreferencesObjectKey(value, key);
  if (storedSetting(key) == value) return;
  throw Failure("cannot store " + key + " in " + lumora::settingsPath +
                " below the device's folder: is it writable, and is there space?");
}

std::optional<std::string> storedSetting(const std::string& key) {
  auto settings = platform::NSMutableDictionary::dictionaryWithContentsOfFile(lumora::settingsPath);
  return settings ? settings->stringForKey(key) : std::nullopt;
}

std::string locationKey(lumora::ScreenLocation location, const std::string& end) {
  return lumora::identifierOf(location) + "_" + end;
}

}  // namespace tool
