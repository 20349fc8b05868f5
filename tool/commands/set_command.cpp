#include "tool/commands/set_command.h"

#include <cstdio>
#include <memory>

#include "tool/device/import_process.h"
#include "tool/support/count.h"

namespace tool {
namespace {

// Indexed by Location::id.
constexpr const char* placeNames[] = {"shared", "lock screen", "home screen"};

struct SetOptions {
  std::string location;
  std::string path;
  double timeout = usualTimeout.count();
  bool noWait = false;
};

void set(const DeviceFolder& device, const SetOptions& options) {
  const ChosenGif gif = readGif(options.path);
  const int frames = countShownFrames(gif);
  const TimeLimit limit{Seconds(options.timeout)};
  const lumora::Location& location = locationNamed(options.location);
  importInOwnProcess(device, location, gif, frames, limit, !options.noWait);
  if (options.noWait) return;
  const auto place = static_cast<std::size_t>(location.id);
  std::printf("%s wallpaper set: %s\n", placeNames[place], countOfFrames(frames).c_str());
}

}  // namespace

void addSetCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<SetOptions>();
  auto* command = addCommand(lumora, context, "set", "set a GIF as a wallpaper",
                             [&context, options] { set(context.device(), *options); });
  addChoice(command, "LOCATION", options->location, locationNames, "wallpaper to set");
  command->add_option("GIF", options->path, "GIF file")->required();
  command->add_flag("--no-wait", options->noWait, "return once the home screen has the GIF");
  addTimeout(command, options->timeout);
}

}  // namespace tool
