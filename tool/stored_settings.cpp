#include "tool/stored_settings.h"

#include "platform/property_list.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"
#include "tool/failure.h"

namespace tool {

namespace {

// What a property list in XML can hold: whole UTF-8 characters, and of the control characters only
// white space.
bool isStorable(const std::string& text) {
  std::size_t following = 0;
  for (const unsigned char byte : text) {
    const bool continues = (byte & 0xC0) == 0x80;
    if (continues != (following > 0)) return false;
    if (continues) {
      --following;
      continue;
    }
    const bool isControl = byte < ' ' && byte != '\t' && byte != '\n' && byte != '\r';
    if (isControl || byte == 0xC0 || byte == 0xC1 || byte > 0xF4) return false;
    following = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC0 ? 1 : 0;
  }
  return following == 0;
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
