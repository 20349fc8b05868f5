#include "tool/commands/set_command.h"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "platform/data.h"
#include "settings/locations.h"
#include "settings/settings_store.h"
#include "tool/device/device_folder.h"
#include "tool/device/import_process.h"
#include "tool/support/count.h"
#include "tool/support/failure.h"
#include "tool/support/gif_file.h"
#include "tool/support/time_limit.h"

namespace tool {
namespace {

// Indexed by Location::id.
constexpr const char* placeNames[] = {"shared", "lock screen", "home screen"};

struct SetOptions {
  // Or the GIF, if path is empty.
  std::string location;
  std::string path;
  double timeout = usualTimeout.count();
  bool keepsOther = false;
  bool noWait = false;
};

void importAt(const DeviceFolder& device, const lumora::Location& location, const ChosenGif& gif,
              const SetOptions& options) {
  const FrameCheck found = checkFrames(gif);
  printDamage(found);
  importInOwnProcess(device, {location, gif, found.shown, TimeLimit(Seconds(options.timeout))},
                     options.noWait ? WaitFor::Handover : WaitFor::Frames);
  if (options.noWait) return;
  const auto place = static_cast<std::size_t>(location.id);
  std::printf("%s wallpaper set: %s\n", placeNames[place], countOfFrames(found.shown).c_str());
}

// Returns the other location of the separate mode. Requires one of the two.
const lumora::Location& otherLocation(const lumora::Location& location) {
  const bool isLockScreen = location.id == lumora::ScreenLocation::LockScreen;
  return lumora::locationOf(isLockScreen ? lumora::ScreenLocation::HomeScreen
                                         : lumora::ScreenLocation::LockScreen);
}

const lumora::Location& sharedLocation() {
  return lumora::locationOf(lumora::ScreenLocation::Shared);
}

// Returns the GIF of the shared wallpaper. Throws Failure if it cannot be read.
ChosenGif sharedGif() {
  auto data = platform::NSData::dataWithContentsOfFile(sharedLocation().gifPath);
  if (!data) throw Failure("cannot read the shared wallpaper");
  return checkGif("the shared wallpaper", std::move(data));
}

void set(const DeviceFolder& device, const SetOptions& options) {
  const ChosenGif gif = readGif(options.path);
  const lumora::Location& location = locationNamed(options.location);
  const bool endsSharedMode = location.mode == lumora::WallpaperMode::Separate &&
                              lumora::wallpaperMode() == lumora::WallpaperMode::Shared &&
                              sharedLocation().getWallpaperSet();
  if (!endsSharedMode) return importAt(device, location, gif, options);
  const lumora::Location& other = otherLocation(location);
  if (options.keepsOther) importAt(device, other, sharedGif(), options);
  importAt(device, location, gif, options);
  if (options.keepsOther) return;
  std::printf("the shared wallpaper is no longer shown on the %s; --keep-other keeps it there\n",
              placeNames[static_cast<std::size_t>(other.id)]);
}

// Returns what is wrong with the name of a location, or nothing.
std::string problemWithLocation(std::string name) {
  return host::takeWord(locationNames, name);
}

// A single argument is the GIF.
void readArguments(SetOptions& options) {
  if (options.path.empty()) options.path = std::exchange(options.location, "shared");
  const std::string problem = problemWithLocation(options.location);
  if (!problem.empty()) throw CLI::ValidationError("LOCATION", problem);
  if (problemWithLocation(options.path).empty()) throw CLI::RequiredError("GIF");
}

}  // namespace

void addSetCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<SetOptions>();
  auto* command = addCommand(lumora, context, "set", "choose the GIF of a wallpaper",
                             [&context, options] { set(context.device(), *options); });
  command->add_option("LOCATION", options->location, "wallpaper to change")
      ->default_str("shared")
      ->type_name("shared|lockscreen|homescreen");
  // Required, but the parser takes a single word for the location.
  command->add_option("GIF", options->path, "GIF file; - is standard input")
      ->option_text("REQUIRED");
  command->parse_complete_callback([options] {
    if (options->location.empty()) throw CLI::RequiredError("GIF");
    readArguments(*options);
  });
  command->add_flag("--keep-other", options->keepsOther,
                    "keep a shared wallpaper on the other screen");
  command->add_flag("--no-wait", options->noWait, "return without waiting for the frames");
  addTimeout(command, options->timeout);
}

}  // namespace tool
