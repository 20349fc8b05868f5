#include "phone/wallpaper_import.h"

#include <string>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "gifview/frame_cache.h"
#include "phone/stopwatch.h"
#include "platform/file_manager.h"
#include "preferences/gif_handover.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"

namespace phone {
namespace {

using command_line::Failure;
using lumora::FrameCacheLayout;
using lumora::Location;

void handOver(HomeScreen& home, const Location& location, const ChosenGif& gif) {
  preferences::storeIncomingGIF(location, *gif.data);
  preferences::storeChoice(location);
  home.post(lumora::control::wallpaperNeedsUpdating);
  const Stopwatch waiting;
  const std::string path = preferences::incomingPath(location);
  while (platform::fileExistsAtPath(path)) {
    if (waiting.seconds() > patience) {
      preferences::removeIncomingGIF(location);
      reportSilence("the wallpaper was not changed");
    }
    home.hears();
  }
  if (preferences::hasTaken(location, *gif.data)) return;
  throw Failure(std::string("the home screen could not import the GIF: check that ") +
                lumora::libraryDirectory + " is writable and has free space");
}

// Returns how many of the frames that the cache lists are there, or -1 if it is not complete or not
// for this GIF.
int framesIn(const FrameCacheLayout& cache, const ChosenGif& gif) {
  const auto durations = lumora::loadFrameDurations(cache);
  if (!durations || !lumora::isFrameCacheValid(cache, *gif.data)) return -1;
  int found = 0;
  for (int index = 0; index < gif.images; ++index) {
    if (platform::fileExistsAtPath(cache.framePath(index))) ++found;
  }
  return found;
}

void checkChoice(const Location& location, const ChosenGif& gif) {
  if (!preferences::hasTaken(location, *gif.data)) {
    throw Failure("another program has removed or replaced the GIF");
  }
  if (!lumora::isUsed(location, lumora::wallpaperMode())) {
    throw Failure("another program has changed the mode");
  }
}

// Waits until the views post nothing any more, and the cache is there or the time is up.
int awaitFrames(HomeScreen& home, const FrameCacheLayout& cache, const ChosenGif& gif,
                double silence) {
  const command_line::ProgressBar bar("making frames", gif.frames);
  Stopwatch sinceLast;
  for (;;) {
    if (home.hears()) {
      sinceLast = Stopwatch();
      bar.show(home.framesFound());
      continue;
    }
    const int found = framesIn(cache, gif);
    if (found >= 0) return found;
    if (sinceLast.seconds() > silence) {
      throw Failure("the GIF is in place, but the home screen makes no frames; " +
                    command_line::countOfFrames(home.framesFound()) + " were made before");
    }
  }
}

}  // namespace

void importWallpaper(HomeScreen& home, const Location& location, const ChosenGif& gif, WaitFor end,
                     double silence) {
  const FrameCacheLayout cache(location.gifPath);
  // Turning the phone can end the making of frames early.
  constexpr int attempts = 3;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    home.listenAnew();
    handOver(home, location, gif);
    if (end == WaitFor::Handover) return;
    if (awaitFrames(home, cache, gif, silence) == gif.frames) {
      home.post(lumora::control::updateAnimating);
      return;
    }
    checkChoice(location, gif);
  }
  throw Failure(std::string("the home screen could not store all frames: check that ") +
                lumora::libraryDirectory + " has free space");
}

}  // namespace phone
