#include "settings/wallpaper_intake.h"

#include <string>

#include "platform/file_manager.h"
#include "settings/locations.h"
#include "settings/settings_store.h"

namespace lumora {
namespace {

const Location* locationOfIncomingFile(const std::string& name) {
  for (const Location& location : locations) {
    if (name == location.incomingName) return &location;
  }
  return nullptr;
}

void makeRoomFor(const Location& location) {
  setPreferencesObjectKey(std::to_string(static_cast<int>(location.mode)), "MODE_INDEX");
  deleteGIFAndFrameCache(location);
}

bool isFolder(const std::string& path) {
  bool isDirectory = false;
  return platform::fileExistsAtPath(path, isDirectory) && isDirectory;
}

}  // namespace

void takeInWallpaperFile() {
  const std::string source = getSafariSavePath();
  const Location* location = locationOfIncomingFile(platform::lastPathComponent(source));
  if (location != nullptr) makeRoomFor(*location);
  if (isFolder(source)) return;
  if (location != nullptr) platform::moveItemAtPath(source, location->gifPath);
  platform::removeItemAtPath(source);
}

}  // namespace lumora
