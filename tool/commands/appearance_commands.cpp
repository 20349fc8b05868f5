#include "tool/commands/appearance_commands.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include <nlohmann/json.hpp>

#include "settings/notification_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/stored_settings.h"
#include "tool/support/failure.h"
#include "tool/support/progress_bar.h"

namespace tool {
namespace {

struct Words {
  std::string location;
  std::string value;
  double timeout = usualTimeout.count();
};

// Tells a running home screen, if there is one.
void notify(const DeviceFolder& device, std::initializer_list<const char*> names) {
  auto host = HostConnection::find(device);
  if (!host) return;
  for (const char* name : names) host->post(name);
  host->settle();
}

// Under the key that begins with the location's identifier and ends so.
void storeFor(const Words& words, const char* key) {
  storeSetting(std::string(locationNamed(words.location).identifier) + key, words.value);
}

// What the views announce while they rewrite their frames. A notification says nothing of its
// sender, and every view that lives hears of a new blur and rewrites its frames.
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

  void await() {
    const ProgressBar bar("blurring frames", framesInCaches());
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
    for (const auto& view : report["views"]) {
      frames += view.value("frames_in_cache", 0);
    }
    return frames;
  }

  // Whether a view has said something within a moment. One without a GIF never does.
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

void changeBlur(const DeviceFolder& device, const Words& words) {
  storeFor(words, "_GIF_BLUR");
  const TimeLimit limit{Seconds(words.timeout)};
  auto host = HostConnection::find(device, limit.left());
  if (!host) return;
  // Two that rewrite at once would mix their frames: the last one to write a file, not the last one
  // to be asked for, would stay.
  FileLock lock(device, FileLock::blur);
  if (!lock.take(limit.left())) {
    throw Failure("another blur has not finished before the timeout; the setting is stored");
  }
  Rewriting rewriting(*host, limit);
  host->post(lumora::blurNeedsUpdatingNotification, limit.left());
  rewriting.await();
  std::printf("%d frames blurred\n", rewriting.framesFound());
}

void addModeCommand(CLI::App& lumora, Context& context) {
  auto mode = std::make_shared<std::string>();
  auto* command = addCommand(
      lumora, context, "mode", "use one wallpaper for both screens, or one each", [&context, mode] {
        const DeviceFolder device = context.device();
        const FileLock lock = lockOutImports(device);
        storeSetting("MODE_INDEX", *mode == "shared" ? "1" : "0");
        notify(device, {lumora::removeUnneededViewNotification, lumora::control::updateAnimating});
      });
  addChoice(command, "MODE", *mode, {"shared", "separate"});
}

// Declares a command that stores a location's value under a key and posts a notification.
CLI::App* addLiveCommand(CLI::App& lumora, Context& context, const char* name,
                         const char* description, const std::shared_ptr<Words>& words,
                         const char* key, const char* notification) {
  auto* command = addCommand(lumora, context, name, description, [=, &context] {
    const DeviceFolder device = context.device();
    storeFor(*words, key);
    notify(device, {notification});
  });
  addChoice(command, "LOCATION", words->location, locationNames);
  return command;
}

void addNumberCommands(CLI::App& lumora, Context& context) {
  constexpr long maxSpeed = 1000;
  auto speed = std::make_shared<Words>();
  addLiveCommand(lumora, context, "speed", "set the speed: 1 normal, 0 frozen", speed, "_GIF_SPEED",
                 lumora::speedNeedsUpdatingNotification)
      ->add_option("FACTOR", speed->value)
      ->required()
      ->check(numberUpTo(maxSpeed));
  auto alpha = std::make_shared<Words>();
  addLiveCommand(lumora, context, "alpha", "set the opacity, 0 to 1", alpha, "_GIF_ALPHA",
                 lumora::alphaNeedsUpdatingNotification)
      ->add_option("OPACITY", alpha->value)
      ->required()
      ->check(numberUpTo(1));
  constexpr long maxRadius = 1000;
  auto blur = std::make_shared<Words>();
  auto* command = addCommand(lumora, context, "blur", "set the blur radius in pixels",
                             [&context, blur] { changeBlur(context.device(), *blur); });
  addChoice(command, "LOCATION", blur->location, locationNames);
  command->add_option("RADIUS", blur->value)->required()->check(numberUpTo(maxRadius));
  addTimeout(command, blur->timeout);
}

}  // namespace

void addAppearanceCommands(CLI::App& lumora, Context& context) {
  addModeCommand(lumora, context);
  addNumberCommands(lumora, context);
  auto scaling = std::make_shared<Words>();
  auto* command = addLiveCommand(lumora, context, "scaling", "set how a GIF fills its screen",
                                 scaling, "_SCALING_MODE", lumora::control::updateWallpaper);
  addChoice(command, "MODE", scaling->value, {"FIT", "FILL", "FULLSCREEN"});
}

}  // namespace tool
