#include "phone/wallpaper_import.h"

#include <algorithm>
#include <string>

#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "gifview/frame_cache.h"
#include "phone/home_screen.h"
#include "phone/stopwatch.h"
#include "platform/file_manager.h"
#include "preferences/gif_handover.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"

namespace phone {
namespace {

using command_line::Failure;
using lumora::FrameCacheLayout;
using lumora::Location;
using platform::DarwinNotifyCenter;

[[noreturn]] void failAfterHandover(const std::string& problem) {
  throw Failure(problem + "; the new GIF is in place, but not all of its frames are made");
}

// A notification that arrives late finds neither the GIF nor the path of one.
void takeBack(const Location& location, const ChosenGif& gif,
              const preferences::KeptChoice& oldChoice) {
  oldChoice.restore();
  preferences::removeIncomingGIF(location);
  if (!preferences::hasTaken(location, *gif.data)) reportSilence("the wallpaper was not changed");
}

void handOver(Views& views, const Location& location, const ChosenGif& gif, double limit) {
  const preferences::KeptChoice oldChoice;
  preferences::storeIncomingGIF(location, *gif.data);
  preferences::storeChoice(location);
  DarwinNotifyCenter::post(lumora::control::wallpaperNeedsUpdating);
  const Stopwatch waiting;
  while (platform::fileExistsAtPath(preferences::incomingPath(location))) {
    if (waiting.seconds() > limit) return takeBack(location, gif, oldChoice);
    views.hear();
  }
  if (preferences::hasTaken(location, *gif.data)) return;
  throw Failure(std::string("the home screen could not import the GIF, and no wallpaper is set: "
                            "check that ") +
                lumora::libraryDirectory + " exists, is writable and has free space");
}

struct CacheContents {
  // The length of the list of delays, which has one for each frame; -1 if there is no list.
  int listed = -1;
  // The number of files of frames.
  int written = 0;
};

CacheContents contentsOf(const FrameCacheLayout& cache, const ChosenGif& gif) {
  CacheContents contents;
  const auto durations = lumora::loadFrameDurations(cache);
  if (!durations || !lumora::isFrameCacheValid(cache, *gif.data)) return contents;
  contents.listed = static_cast<int>(durations->size());
  for (int index = 0; index < gif.images; ++index) {
    if (platform::fileExistsAtPath(cache.framePath(index))) ++contents.written;
  }
  return contents;
}

// Waits until the views post nothing any more, and the list of delays is there.
CacheContents awaitFrames(Views& views, const Location& location, const ChosenGif& gif,
                          double silence) {
  const FrameCacheLayout cache(location.gifPath);
  const command_line::ProgressBar bar("making frames", gif.frames);
  for (Stopwatch sinceLast;;) {
    if (views.hear()) {
      sinceLast = Stopwatch();
      bar.show(views.framesFound());
      continue;
    }
    const CacheContents found = contentsOf(cache, gif);
    if (found.listed >= 0) return found;
    preferences::checkChoice(location, *gif.data);
    if (sinceLast.seconds() > silence) failAfterHandover("the home screen makes no frames");
  }
}

}  // namespace

void importWallpaper(const Location& location, const ChosenGif& gif, WaitFor end, double silence) {
  // Turning the phone can end the making of frames early.
  constexpr int attempts = 3;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    Views views;
    views.awaitRest(silence);
    handOver(views, location, gif, std::min(patience, silence));
    if (end == WaitFor::Handover) return;
    const CacheContents found = awaitFrames(views, location, gif, silence);
    if (found.written < found.listed) {
      failAfterHandover(std::string("the home screen could not store all frames: check that ") +
                        lumora::libraryDirectory + " has free space");
    }
    if (found.listed == gif.frames) {
      DarwinNotifyCenter::post(lumora::control::updateAnimating);
      return;
    }
    preferences::checkChoice(location, *gif.data);
  }
  failAfterHandover("the making of frames was interrupted; do not turn the phone meanwhile");
}

}  // namespace phone
