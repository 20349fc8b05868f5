#include "tool/commands/blur_command.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include <nlohmann/json.hpp>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "gifview/description_keys.h"
#include "host/control/status_keys.h"
#include "preferences/changes.h"
#include "preferences/commands/blur_arguments.h"
#include "settings/notification_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"

namespace tool {

using command_line::countOfFrames;
using command_line::Failure;
using command_line::ProgressBar;
using command_line::ProgressStyle;

namespace {

struct BlurOptions {
  std::string location;
  std::string radius;
  double timeout = usualTimeout.count();
  ProgressStyle progress = ProgressStyle::Bar;
};

// Waits until all views have rewritten their frames. Every view rewrites its frames, whichever
// location's blur was changed, and notifications do not name their sender.
class Rewriting {
 public:
  Rewriting(HostConnection& host, const TimeLimit& limit) : host_(host), limit_(limit) {
    for (const std::string& name : locationNames) {
      const char* identifier = locationNamed(name).identifier;
      if (host.serves(std::string(lumora::messagingCenterPrefix) + identifier, limit.left())) {
        ++liveViews_;
      }
    }
    host.watch([this](const std::string& name) {
      if (name == lumora::frameFoundNotification) ++framesFound_;
      if (name == lumora::blurDidFinishNotification) ++viewsDone_;
    });
  }

  void await(ProgressStyle style) {
    const ProgressBar bar("blurring frames", framesInCaches(), style);
    while (viewsDone_ < liveViews_) {
      if (limit_.isOver()) {
        throw Failure("the home screen is still blurring after the timeout; the setting is stored");
      }
      if (!hears() && host_.settle(limit_.left())) break;
      bar.show(framesFound_);
    }
  }

  int framesFound() const { return framesFound_; }

 private:
  int framesInCaches() {
    int frames = 0;
    const auto report = nlohmann::json::parse(host_.status(limit_.left()));
    for (const auto& view : report[host::status::views]) {
      frames += view.value(lumora::description::framesInCache, 0);
    }
    return frames;
  }

  // Returns true if a view posts something within 0.3 s. A view without a GIF never does.
  bool hears() {
    constexpr std::chrono::milliseconds moment{300};
    const int before = framesFound_ + viewsDone_;
    const auto end = std::min(limit_.end(), std::chrono::steady_clock::now() + moment);
    while (framesFound_ + viewsDone_ == before && std::chrono::steady_clock::now() < end) {
      if (!host_.pump(end)) throw Failure("the home screen has ended");
    }
    return framesFound_ + viewsDone_ != before;
  }

  HostConnection& host_;
  const TimeLimit& limit_;
  int liveViews_ = 0;
  int framesFound_ = 0;
  int viewsDone_ = 0;
};

void changeBlur(const DeviceFolder& device, const BlurOptions& options) {
  const auto change = preferences::changeOf(preferences::LiveSetting::Blur,
                                            locationNamed(options.location), options.radius);
  store(change);
  const TimeLimit limit{Seconds(options.timeout)};
  auto host = HostConnection::find(device, limit.left());
  if (!host) return;
  // If two commands rewrote the frames at once, the frames could end with different radii.
  FileLock lock(device, FileLock::blur);
  if (!lock.take(limit.left())) {
    throw Failure("another blur command is still running after the timeout; the setting is stored");
  }
  Rewriting rewriting(*host, limit);
  for (const char* name : change.notifications) host->post(name, limit.left());
  rewriting.await(options.progress);
  std::printf("%s blurred\n", countOfFrames(rewriting.framesFound()).c_str());
}

}  // namespace

void addBlurCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<BlurOptions>();
  auto* command = addCommand(lumora, context, "blur", "blur the GIF",
                             [&context, options] { changeBlur(context.madeDevice(), *options); });
  preferences::addBlurArguments(command, options->location, options->radius);
  addOutput(command, context.output);
  addTimeout(command, options->timeout);
  addProgress(command, options->progress);
}

}  // namespace tool
