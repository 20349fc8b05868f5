#include "tool/device/wallpaper_import.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "command_line/failure.h"
#include "gifview/frame_cache.h"
#include "host/control/control_names.h"
#include "host/control/status_keys.h"
#include "platform/linux/files/file_contents.h"
#include "preferences/gif_handover.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "tool/device/cache_contents.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/device/old_wallpaper.h"
#include "tool/device/wallpaper_names.h"

namespace tool {

using command_line::Failure;

namespace {

using lumora::Location;
using preferences::hasTaken;
using preferences::incomingPath;
using std::chrono::steady_clock;

std::string adviceOnFolder() {
  return std::string(" check that ") + lumora::libraryDirectory +
         " in the device folder exists, is writable and has free space";
}

// Returns the contents of the location's cache, or of an empty one if it is not for exactly this
// GIF.
CacheContents cacheOf(const Location& location, const ChosenGif& gif) {
  const lumora::FrameCacheLayout layout(location.gifPath);
  return lumora::isFrameCacheValid(layout, *gif.data) ? contentsOf(layout) : CacheContents();
}

class WallpaperImport {
 public:
  // All must outlive this object.
  WallpaperImport(const DeviceFolder& device, HostConnection& host, const Import& import,
                  const std::function<void(const ImportProgress&)>& report);
  WallpaperImport(const WallpaperImport&) = delete;
  WallpaperImport& operator=(const WallpaperImport&) = delete;

  // The two halves of importWallpaper. They throw Failure.
  void handOver();
  void finish();

  const char* state() const { return progress_.state; }

 private:
  void reach(const char* state);
  void awaitRest();
  void awaitFrames();
  void storeFile();
  void announce();
  int timesOutOfMemory();
  void restore();
  [[noreturn]] void giveUp(const std::string& problem);

  const DeviceFolder& device_;
  HostConnection& host_;
  const Location& location_;
  const ChosenGif& gif_;
  const int frames_;
  TimeLimit limit_;
  const bool isInUse_;
  const std::function<void(const ImportProgress&)>& report_;
  FileLock lock_;
  // After the lock, so that its link is deleted while the lock is held.
  OldWallpaper old_;
  int timesOutOfMemory_ = 0;
  bool isAnnounced_ = false;
  ImportProgress progress_;
};

WallpaperImport::WallpaperImport(const DeviceFolder& device, HostConnection& host,
                                 const Import& import,
                                 const std::function<void(const ImportProgress&)>& report)
    : device_(device),
      host_(host),
      location_(import.location),
      gif_(import.gif),
      frames_(import.frames),
      limit_(import.limit),
      isInUse_(import.isInUse),
      report_(report),
      lock_(device, FileLock::import),
      old_(device) {
  host_.watch([this](const std::string& name) {
    if (name == lumora::frameFoundNotification) ++progress_.framesFound;
    if (name == lumora::didStartAnimatingNotification) isAnnounced_ = true;
  });
}

void WallpaperImport::handOver() {
  if (!lock_.take(limit_.left())) {
    throw Failure("another import has not finished before the timeout");
  }
  awaitRest();
  timesOutOfMemory_ = timesOutOfMemory();
  old_.keepSettings();
  progress_.isChanging = true;
  report_(progress_);
  limit_ = TimeLimit(maxImportTime);
  old_.keepFile(location_);
  storeFile();
  preferences::storeChoice(location_);
  announce();
  if (!hasTaken(location_, *gif_.data)) {
    giveUp(
        "the home screen could not import the GIF; if it runs with --library, add `--library "
        "lumora`; otherwise" +
        adviceOnFolder());
  }
  // A GIF that is reported as set must survive a power failure. Frames can be made again.
  platform::backend::makeDurable(location_.gifPath);
  nameWallpaper(device_, location_, gif_.name);
  tellWallpaperName(host_, device_);
  progress_.isHandedOver = true;
  reach("the new GIF is in place, but not all of its frames are made yet");
}

void WallpaperImport::awaitFrames() {
  for (;;) {
    constexpr std::chrono::milliseconds moment{300};
    const int before = progress_.framesFound;
    if (!host_.pump(std::min(limit_.end(), steady_clock::now() + moment))) {
      throw Failure("the home screen has ended");
    }
    report_(progress_);
    // While frames arrive, the home screen is busy, so do not ask.
    const bool areComing = progress_.framesFound != before && !std::exchange(isAnnounced_, false);
    if (!areComing && host_.settle(limit_.left())) return;
    if (limit_.isOver()) throw Failure("the home screen is still making frames");
  }
}

void WallpaperImport::finish() {
  for (;;) {
    awaitFrames();
    const CacheContents cache = cacheOf(location_, gif_);
    if (timesOutOfMemory() > timesOutOfMemory_) giveUp("the home screen ran out of memory");
    if (cache.written < cache.listed) {
      giveUp("the home screen could not store all frames:" + adviceOnFolder());
    }
    if (cache.listed == frames_) break;
    // Another program's request, such as a rotation of the screen, has ended the extraction early.
    // That must not be undone.
    preferences::checkChoice(location_, *gif_.data);
    progress_.framesFound = 0;
    awaitRest();
    storeFile();
    announce();
  }
  host_.call(host::service::method::noteNewWallpaper, limit_.left());
  host_.post(lumora::control::updateAnimating, limit_.left());
  host_.settle(limit_.left());
}

void WallpaperImport::reach(const char* state) {
  if (isInUse_) progress_.state = state;
  report_(progress_);
}

void WallpaperImport::awaitRest() {
  while (!host_.settle(limit_.left())) {
    if (limit_.isOver()) {
      throw Failure("the home screen has not finished its work before the timeout");
    }
  }
}

void WallpaperImport::storeFile() {
  preferences::storeIncomingGIF(location_, *gif_.data);
  if (platform::backend::makeDurable(incomingPath(location_))) return;
  preferences::removeIncomingGIF(location_);
  throw Failure("cannot copy the GIF into the device folder; check that it has free space");
}

// Posts the notification of a chosen GIF. Returns after the home screen has handled it: it handles
// what arrives in order, so its answer to any question comes later.
void WallpaperImport::announce() {
  host_.post(lumora::control::wallpaperNeedsUpdating, limit_.left());
  host_.status(limit_.left());
}

int WallpaperImport::timesOutOfMemory() {
  return nlohmann::json::parse(host_.status(limit_.left())).value(host::status::outOfMemory, 0);
}

void WallpaperImport::restore() {
  host_.settle(limit_.left());
  if (old_.putFileAt(incomingPath(location_))) {
    preferences::storeChoice(location_);
    announce();
  } else {
    host_.post(location_.removalNotification, limit_.left());
  }
  host_.settle(limit_.left());
  old_.restoreSettings();
  host_.post(lumora::control::updateAnimating, limit_.left());
  host_.settle(limit_.left());
}

void WallpaperImport::giveUp(const std::string& problem) {
  try {
    restore();
    reach(old_.hasFile()      ? "the old wallpaper has been restored"
          : old_.isFileLost() ? "the old wallpaper could not be kept, and none is set"
                              : "no wallpaper is set, as before");
  } catch (const Failure&) {
    reach("the old wallpaper could not be restored");
  }
  throw Failure(problem);
}

}  // namespace

void importWallpaper(const DeviceFolder& device, const Import& import,
                     const std::function<void(const ImportProgress&)>& report) {
  auto host = HostConnection::require(device, import.limit.left());
  WallpaperImport running(device, *host, import, report);
  try {
    running.handOver();
    running.finish();
  } catch (const Failure& failure) {
    throw Failure(failure.what() + std::string("; ") + running.state(), failure.code());
  }
}

}  // namespace tool
