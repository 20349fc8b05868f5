#include "tool/set_command.h"

#include <cstdio>
#include <optional>
#include <utility>

#include "gifview/frame_cache.h"
#include "gifview/notification_names.h"
#include "platform/file_manager.h"
#include "settings/control_names.h"
#include "settings/device_paths.h"
#include "tool/failure.h"
#include "tool/file_lock.h"
#include "tool/progress_bar.h"
#include "tool/stored_settings.h"

namespace tool {
namespace {

using lumora::ScreenLocation;

constexpr auto incomingDirectory = "/var/mobile/Media/Downloads";

std::string incomingPath(ScreenLocation location) {
  return std::string(incomingDirectory) + "/" + locationKey(location, "LUMORA_WALLPAPER.gif");
}

std::string libraryPath(ScreenLocation location) {
  switch (location) {
    case ScreenLocation::LockScreen:
      return lumora::lockscreenGIFPath;
    case ScreenLocation::HomeScreen:
      return lumora::homescreenGIFPath;
    default:
      return lumora::sharedGIFPath;
  }
}

void storeIncomingFile(ScreenLocation location, const ChosenGif& gif) {
  const std::string path = incomingPath(location);
  platform::createDirectoryAtPath(incomingDirectory);
  if (!gif.data->writeToFileAtomically(path)) {
    throw Failure("cannot copy the GIF to " + path +
                  " below the device's folder: is it there and writable, and is there space?");
  }
}

void storeChoice(ScreenLocation location) {
  try {
    if (location == ScreenLocation::LockScreen) storeSetting("LOCATION_INDEX", "0");
    if (location == ScreenLocation::HomeScreen) storeSetting("LOCATION_INDEX", "1");
    storeSetting("SAFARI_DIRECTORY", incomingPath(location));
  } catch (const Failure&) {
    platform::removeItemAtPath(incomingPath(location));
    throw;
  }
}

// What the views announce while one makes its cache.
struct Extraction {
  int framesFound = 0;
  bool isAnnounced = false;
};

void watchExtraction(HostConnection& host, Extraction& extraction) {
  host.watch([&extraction](const std::string& name) {
    if (name == lumora::frameFoundNotification) ++extraction.framesFound;
    if (name == lumora::didStartAnimatingNotification) extraction.isAnnounced = true;
  });
}

// The number of frames in the cache of exactly this GIF; nothing while it is not whole.
std::optional<int> framesInCache(ScreenLocation location, const ChosenGif& gif) {
  const lumora::FrameCacheLayout layout(libraryPath(location));
  const auto durations = lumora::loadFrameDurations(layout);
  if (!durations || !lumora::isFrameCacheValid(layout, *gif.data)) return std::nullopt;
  const int count = static_cast<int>(durations->size());
  for (int index = 0; index < count; ++index) {
    if (!platform::fileExistsAtPath(layout.framePath(index))) return std::nullopt;
  }
  return count;
}

// A view says only that it is ready, not which one, nor for which GIF; and the home screen keeps
// silent about what it could not write. So the cache itself is looked at.
int awaitFrames(HostConnection& host, ScreenLocation location, const ChosenGif& gif,
                Extraction& extraction, const TimeLimit& limit) {
  const ProgressBar bar("making frames", gif.frameCount);
  while (!limit.isOver()) {
    if (!host.pump(limit.end())) throw Failure("the home screen has ended");
    bar.show(extraction.framesFound);
    if (!std::exchange(extraction.isAnnounced, false)) continue;
    const bool isAtRest = host.settle(limit.left());
    if (const auto count = framesInCache(location, gif)) return *count;
    if (!isAtRest) continue;
    throw Failure("the frames could not all be written to " +
                  lumora::FrameCacheLayout(libraryPath(location)).GIFDirectory +
                  " below the device's folder: is it there and writable, and is there space?");
  }
  throw Failure("the home screen is still making frames after the time allowed (--timeout)");
}

const char* placeName(ScreenLocation location) {
  switch (location) {
    case ScreenLocation::LockScreen:
      return "lock screen";
    case ScreenLocation::HomeScreen:
      return "home screen";
    default:
      return "shared";
  }
}

}  // namespace

void handOver(HostConnection& host, ScreenLocation location, const ChosenGif& gif,
              const TimeLimit& limit) {
  storeIncomingFile(location, gif);
  storeChoice(location);
  host.post(lumora::control::wallpaperNeedsUpdating);
  // Answered after the notification has been handled, and with it the intake of the file.
  host.status(limit.left());
  const auto taken = platform::NSData::dataWithContentsOfFile(libraryPath(location));
  if (!taken || !taken->isEqualToData(*gif.data)) {
    throw Failure("the home screen could not take the GIF in: is " +
                  std::string(lumora::libraryDirectory) +
                  " below the device's folder there and writable, and is there space?");
  }
}

void setWallpaper(const DeviceFolder& device, ScreenLocation location, const std::string& path,
                  bool waits, Seconds timeout) {
  const ChosenGif gif = readGif(path);
  const TimeLimit limit(timeout);
  auto host = HostConnection::require(device, limit.left());
  // An incoming file has one place: two that are handed over at once would take it from each other.
  FileLock lock(device.handOverLockFile());
  if (!lock.take(limit.left())) {
    throw Failure("another `lumora set` is not done after the time allowed (--timeout)");
  }
  Extraction extraction;
  if (waits) watchExtraction(*host, extraction);
  handOver(*host, location, gif, limit);
  const int frames = waits ? awaitFrames(*host, location, gif, extraction, limit) : 0;
  host->post(lumora::control::updateAnimating);
  if (!waits) return;
  host->settle(limit.left());
  std::printf("%s wallpaper set: %d frames\n", placeName(location), frames);
}

}  // namespace tool
