#include "preferences/stored_settings.h"

#include <algorithm>

#include <utf8cpp/utf8.h>

#include "command_line/failure.h"
#include "platform/property_list.h"
#include "settings/device_paths.h"

namespace preferences {

using command_line::ExitCode;
using command_line::Failure;

namespace {

// Returns true if an XML property list can hold the text: no control characters except white space.
bool isStorable(const std::string& text) {
  const bool hasControl = std::any_of(text.begin(), text.end(), [](unsigned char byte) {
    return byte < ' ' && byte != '\t' && byte != '\n' && byte != '\r';
  });
  return !hasControl && utf8::is_valid(text.begin(), text.end());
}

}  // namespace

void storeSetting(const std::string& key, const std::string& value) {
  if (!isStorable(key) || !isStorable(value)) {
    throw Failure("cannot store " + key + ": control characters and invalid UTF-8 cannot be stored",
                  ExitCode::WrongUse);
  }
  using platform::NSMutableDictionary;
  auto settings = NSMutableDictionary::dictionaryWithContentsOfFile(lumora::settingsPath);
  if (!settings) settings.emplace();
  settings->setString(value, key);
  if (settings->writeToFile(lumora::settingsPath)) return;
  throw Failure("cannot store " + key + " in the device's " + lumora::settingsPath +
                "; check that it is writable, not larger than 2 MB, and has free space");
}

std::optional<std::string> storedSetting(const std::string& key) {
  auto settings = platform::NSMutableDictionary::dictionaryWithContentsOfFile(lumora::settingsPath);
  return settings ? settings->stringForKey(key) : std::nullopt;
}

}  // namespace preferences
