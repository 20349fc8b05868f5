#include "phone/blur_command.h"

#include <cstdio>
#include <memory>
#include <string>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "gifview/frame_cache.h"
#include "phone/file_owner.h"
#include "phone/home_screen.h"
#include "phone/stopwatch.h"
#include "preferences/changes.h"
#include "preferences/commands/blur_arguments.h"
#include "preferences/location_names.h"

namespace phone {
namespace {

struct BlurOptions {
  std::string location;
  std::string radius;
  double timeout = 60;
};

// The views that the home screen can have, and all of their frames. Each view rewrites its frames,
// whichever location's blur has changed.
struct Views {
  int count = 0;
  int frames = 0;
};

Views viewsInUse() {
  Views views;
  for (const lumora::Location& location : lumora::locations) {
    const bool isUsed = lumora::isUsed(location, lumora::wallpaperMode());
    if (!isUsed || !location.getWallpaperSet()) continue;
    const auto durations = lumora::loadFrameDurations(lumora::FrameCacheLayout(location.gifPath));
    if (!durations) continue;
    ++views.count;
    views.frames += static_cast<int>(durations->size());
  }
  return views;
}

void changeBlur(const BlurOptions& options) {
  workAsOwner();
  HomeScreen home;
  const Views views = viewsInUse();
  home.make(preferences::changeOf(preferences::LiveSetting::Blur,
                                  preferences::locationNamed(options.location), options.radius));
  if (views.count == 0) return;
  const command_line::ProgressBar bar("blurring frames", views.frames);
  Stopwatch sinceLast;
  while (home.timesBlurred() < views.count) {
    if (home.hears()) sinceLast = Stopwatch();
    bar.show(home.framesFound());
    const bool isSilent = home.framesFound() + home.timesBlurred() == 0;
    if (isSilent && sinceLast.seconds() > patience) reportSilence("the setting is stored");
    if (sinceLast.seconds() > options.timeout) {
      throw command_line::Failure(
          "the home screen is still blurring after the timeout; the setting is stored");
    }
  }
  std::printf("%s blurred\n", command_line::countOfFrames(home.framesFound()).c_str());
}

}  // namespace

void addBlurCommand(CLI::App& lumora, command_line::Context& context) {
  auto options = std::make_shared<BlurOptions>();
  auto* command =
      addCommand(lumora, context, "blur", "blur the GIF", [options] { changeBlur(*options); });
  preferences::addBlurArguments(command, options->location, options->radius);
  command_line::addTimeout(command, options->timeout);
}

}  // namespace phone
