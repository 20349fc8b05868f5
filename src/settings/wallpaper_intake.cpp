#include "settings/wallpaper_intake.h"

#include <algorithm>
#include <string>

#include "platform/file_manager.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"

namespace lumora {
namespace {

struct IncomingFile {
  const char* name;
  const char* modeIndex;
  const char* destination;
};

constexpr IncomingFile incomingFiles[] = {
    {"SHARED_LUMORA_WALLPAPER.gif", "1", sharedGIFPath},
    {"LOCKSCREEN_LUMORA_WALLPAPER.gif", "0", lockscreenGIFPath},
    {"HOMESCREEN_LUMORA_WALLPAPER.gif", "0", homescreenGIFPath},
};

void makeRoomFor(const IncomingFile& incoming) {
  setPreferencesObjectKey(incoming.modeIndex, "MODE_INDEX");
  platform::removeItemAtPath(incoming.destination);
  platform::removeItemAtPath(platform::stringByDeletingPathExtension(incoming.destination));
}

bool isFolder(const std::string& path) {
  bool isDirectory = false;
  return platform::fileExistsAtPath(path, isDirectory) && isDirectory;
}

}  // namespace

void takeInWallpaperFile() {
  const std::string source = getSafariSavePath();
  const std::string name = platform::lastPathComponent(source);
  const auto* incoming =
      std::find_if(std::begin(incomingFiles), std::end(incomingFiles),
                   [&name](const IncomingFile& file) { return name == file.name; });
  const bool isKnown = incoming != std::end(incomingFiles);
  if (isKnown) makeRoomFor(*incoming);
  if (isFolder(source)) return;
  if (isKnown) platform::moveItemAtPath(source, incoming->destination);
  platform::removeItemAtPath(source);
}

}  // namespace lumora
