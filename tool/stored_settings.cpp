#include "tool/stored_settings.h"

#include <algorithm>

#include <utf8cpp/utf8.h>

#include "platform/property_list.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"
#include "tool/failure.h"

namespace tool {

namespace {

// What a property list in XML can hold: of the control characters only white space.
bool isStorable(const std::string& text) {
  const bool hasControl = std::any_of(text.begin(), text.end(), [](unsigned char byte) {
    return byte < ' ' && byte != '\t' && byte != '\n' && byte != '\r';
  });
  return !hasControl && utf8::is_valid(text.begin(), text.end());
}

}  // namespace

void storeSetting(const std::string& key, const std::string& value) {
  if (!isStorable(key) || !isStorable(value)) {
    throw Failure("cannot store " + key +
                      ": control characters and damaged text do not go into a " + "property list",
                  ExitCode::WrongUse);
  }
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
