#include "phone/blur_command.h"

#include <cstdio>
#include <memory>
#include <string>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "gifview/frame_cache.h"
#include "phone/command_lock.h"
#include "phone/file_owner.h"
#include "phone/home_screen.h"
#include "phone/stopwatch.h"
#include "preferences/changes.h"
#include "preferences/commands/blur_arguments.h"
#include "preferences/location_names.h"
#include "settings/settings_store.h"

namespace phone {
namespace {

struct BlurOptions {
  std::string location;
  std::string radius;
  double timeout = 60;
};

// Returns the number of frames of all wallpapers that are shown. Each view rewrites its frames,
// whichever location's blur has changed.
int framesInUse() {
  int frames = 0;
  for (const lumora::Location& location : lumora::locations) {
    const bool isUsed = lumora::isUsed(location, lumora::wallpaperMode());
    if (!isUsed || !location.getWallpaperSet()) continue;
    const auto durations = lumora::loadFrameDurations(lumora::FrameCacheLayout(location.gifPath));
    if (durations) frames += static_cast<int>(durations->size());
  }
  return frames;
}

void changeBlur(const BlurOptions& options) {
  workAsOwner();
  const CommandLock lock(options.timeout);
  Views views;
  const int frames = framesInUse();
  make(preferences::changeOf(preferences::LiveSetting::Blur,
                             preferences::locationNamed(options.location), options.radius));
  // A home screen for which Lumora is disabled may have no views.
  if (frames == 0 || !lumora::getEnabled()) return;
  const command_line::ProgressBar bar("blurring frames", frames);
  // Every view posts its end, but the system may deliver two as one.
  constexpr double rest = 2;
  for (Stopwatch sinceLast; !views.haveBlurred() || sinceLast.seconds() < rest;) {
    if (views.hear()) sinceLast = Stopwatch();
    bar.show(views.framesFound());
    const bool isSilent = views.framesFound() == 0 && !views.haveBlurred();
    if (isSilent && sinceLast.seconds() > patience) reportSilence("the setting is stored");
    if (sinceLast.seconds() > options.timeout + rest) {
      throw command_line::Failure(
          "the home screen is still blurring after the timeout; the setting is stored");
    }
  }
  std::printf("%s blurred\n", command_line::countOfFrames(frames).c_str());
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
