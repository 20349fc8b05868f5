#include "tool/commands/set_command.h"

#include <cstdio>
#include <functional>
#include <memory>

#include "tool/device/wallpaper_import.h"
#include "tool/support/child_process.h"
#include "tool/support/interruption.h"

namespace tool {
namespace {

// In the order of the locations' numbers.
constexpr const char* placeNames[] = {"shared", "lock screen", "home screen"};

struct SetOptions {
  std::string location;
  std::string path;
  double timeout = usualTimeout.count();
  bool noWait = false;
};

int import(const DeviceFolder& device, const SetOptions& options, const ChosenGif& gif,
           const std::function<void()>& handedOver) {
  const TimeLimit limit{Seconds(options.timeout)};
  return importWallpaper(device, locationNamed(options.location), gif, limit, handedOver);
}

void set(const DeviceFolder& device, const SetOptions& options) {
  const ChosenGif gif = readGif(options.path);
  const Interruption interruption;
  if (options.noWait) {
    runDetached([&](const std::function<void()>& detach) { import(device, options, gif, detach); });
    return;
  }
  const int frames = import(device, options, gif, [] {});
  const auto place = static_cast<std::size_t>(locationNamed(options.location).id);
  std::printf("%s wallpaper set: %d frames\n", placeNames[place], frames);
}

}  // namespace

void addSetCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<SetOptions>();
  auto* command = addCommand(lumora, context, "set", "choose a GIF",
                             [&context, options] { set(context.device(), *options); });
  addChoice(command, "LOCATION", options->location, locationNames);
  command->add_option("GIF", options->path)->required();
  command->add_flag("--no-wait", options->noWait, "return as soon as the home screen has the GIF");
  addTimeout(command, options->timeout);
}

}  // namespace tool
