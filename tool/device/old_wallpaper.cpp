#include "tool/device/old_wallpaper.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/file_manager.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"
#include "preferences/stored_settings.h"

namespace tool {

using command_line::Failure;

namespace {

constexpr auto linkName = "previous.gif";

}  // namespace

OldWallpaper::~OldWallpaper() {
  if (hasFile_) unlinkat(device_.hostFolder(), linkName, 0);
}

void OldWallpaper::keepSettings() {
  mode_ = preferences::storedSetting("MODE_INDEX").value_or("");
  location_ = preferences::storedSetting("LOCATION_INDEX").value_or("");
}

void OldWallpaper::keepFile(const lumora::Location& location) {
  unlinkat(device_.hostFolder(), linkName, 0);
  const auto old = platform::backend::findItem(location.gifPath);
  if (!old) return;
  hasFile_ =
      linkat(old->directory.get(), old->name.c_str(), device_.hostFolder(), linkName, 0) == 0;
  isFileLost_ = !hasFile_ && errno != ENOENT;
}

bool OldWallpaper::putFileAt(const std::string& path) const {
  // What was kept may be something else than a readable file.
  if (!hasFile_ || !platform::backend::openFileAt(device_.hostFolder(), linkName)) return false;
  const auto place = platform::backend::findItem(path);
  platform::removeItemAtPath(path);
  if (!place ||
      linkat(device_.hostFolder(), linkName, place->directory.get(), place->name.c_str(), 0) != 0) {
    throw Failure("cannot put the old GIF at " + path);
  }
  return true;
}

void OldWallpaper::restoreSettings() const {
  preferences::storeSetting("MODE_INDEX", mode_);
  preferences::storeSetting("LOCATION_INDEX", location_);
}

}  // namespace tool
