#include "preferences/gif_handover.h"

#include "command_line/failure.h"
#include "platform/file_manager.h"
#include "preferences/stored_settings.h"
#include "settings/settings_store.h"

namespace preferences {

using command_line::Failure;

namespace {

using lumora::Location;

constexpr auto incomingDirectory = "/var/mobile/Media/Downloads";
constexpr auto pathKey = "SAFARI_DIRECTORY";
constexpr auto locationIndexKey = "LOCATION_INDEX";

}  // namespace

std::string incomingPath(const Location& location) {
  return std::string(incomingDirectory) + "/" + location.incomingName;
}

void storeIncomingGIF(const Location& location, const platform::NSData& gif) {
  const std::string path = incomingPath(location);
  platform::createDirectoryAtPath(incomingDirectory);
  if (gif.writeToFileAtomically(path)) return;
  removeIncomingGIF(location);
  throw Failure("cannot copy the GIF to the device's " + path +
                "; check that its folder exists, is writable and has free space");
}

void removeIncomingGIF(const Location& location) {
  platform::removeItemAtPath(incomingPath(location));
}

void storeChoice(const Location& location) {
  try {
    if (location.locationIndex >= 0) {
      storeSetting(locationIndexKey, std::to_string(location.locationIndex));
    }
    storeSetting(pathKey, incomingPath(location));
  } catch (const Failure&) {
    removeIncomingGIF(location);
    throw;
  }
}

KeptChoice::KeptChoice()
    : path_(storedSetting(pathKey).value_or("")),
      locationIndex_(storedSetting(locationIndexKey).value_or("")) {}

void KeptChoice::restore() const {
  storeSetting(pathKey, path_);
  storeSetting(locationIndexKey, locationIndex_);
}

bool hasTaken(const Location& location, const platform::NSData& gif) {
  const auto taken = platform::NSData::dataWithContentsOfFile(location.gifPath);
  return taken && taken->isEqualToData(gif);
}

void checkChoice(const Location& location, const platform::NSData& gif) {
  if (!hasTaken(location, gif)) throw Failure("another program has removed or replaced the GIF");
  if (!lumora::isUsed(location, lumora::wallpaperMode())) {
    throw Failure("another program has changed the mode");
  }
}

}  // namespace preferences
