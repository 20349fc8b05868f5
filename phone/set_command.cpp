#include "phone/set_command.h"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "phone/chosen_gif.h"
#include "phone/command_lock.h"
#include "phone/file_owner.h"
#include "phone/wallpaper_import.h"
#include "preferences/commands/gif_arguments.h"
#include "preferences/location_names.h"
#include "preferences/separation.h"

namespace phone {
namespace {

using lumora::Location;

struct SetOptions {
  // Or the GIF, if path is empty.
  std::string location;
  std::string path;
  double timeout = 60;
  bool keepsOther = false;
  bool noWait = false;
};

void importAt(const Location& location, const ChosenGif& gif, const SetOptions& options) {
  importWallpaper(location, gif, options.noWait ? WaitFor::Handover : WaitFor::Frames,
                  options.timeout);
  if (options.noWait) return;
  std::printf("%s wallpaper set: %s\n", preferences::placeName(location),
              command_line::countOfFrames(gif.frames).c_str());
}

ChosenGif sharedGif() {
  auto data = platform::NSData::dataWithContentsOfFile(
      lumora::locationOf(lumora::ScreenLocation::Shared).gifPath);
  if (!data) throw command_line::Failure("cannot read the shared wallpaper");
  return checkGif("the shared wallpaper", std::move(data), "GIF8");
}

void set(const SetOptions& options) {
  // As root, if the program is run by root: the GIF may be anywhere.
  const ChosenGif gif = readGif(options.path);
  workAsOwner();
  const CommandLock lock(options.timeout);
  const Location& location = preferences::locationNamed(options.location);
  const Location* other = preferences::otherLocationThatLoses(location);
  if (other != nullptr && options.keepsOther) importAt(*other, sharedGif(), options);
  importAt(location, gif, options);
  if (other != nullptr && !options.keepsOther) preferences::printLossOf(*other);
}

}  // namespace

void addSetCommand(CLI::App& lumora, command_line::Context& context) {
  auto options = std::make_shared<SetOptions>();
  auto* command = addCommand(lumora, context, "set", "choose the GIF of a wallpaper",
                             [options] { set(*options); });
  preferences::addLocationAndGif(command, options->location, options->path);
  command->add_flag("--keep-other", options->keepsOther,
                    "keep a shared wallpaper on the other screen");
  command->add_flag(
      "--no-wait", options->noWait,
      "return once the home screen has the GIF; it moves when its screen is shown anew");
  command_line::addTimeout(command, options->timeout)
      ->description("longest time to wait for the home screen's next frame");
}

}  // namespace phone
