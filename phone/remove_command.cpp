#include "phone/remove_command.h"

#include <cstdio>
#include <memory>
#include <string>

#include "phone/file_owner.h"
#include "phone/home_screen.h"
#include "phone/stopwatch.h"
#include "platform/file_manager.h"
#include "preferences/commands/removal_arguments.h"
#include "preferences/location_names.h"
#include "settings/notification_names.h"

namespace phone {
namespace {

using lumora::Location;

// Returns once the home screen has deleted the GIF. Throws Failure if it does not.
void removeGif(HomeScreen& home, const Location& location) {
  home.post(location.removalNotification);
  const Stopwatch waiting;
  while (platform::fileExistsAtPath(location.gifPath)) {
    if (waiting.seconds() > patience) reportSilence("the wallpaper was not removed");
    home.hears();
  }
}

void remove(const std::string& location, bool forgets) {
  workAsOwner();
  HomeScreen home;
  if (location != "all") return removeGif(home, preferences::locationNamed(location));
  home.post(lumora::control::removeGIFFromAllWallpapers);
  if (!forgets) {
    std::printf("%s\n", preferences::allHidden);
    return;
  }
  for (const Location& each : lumora::locations) removeGif(home, each);
}

}  // namespace

void addRemoveCommand(CLI::App& lumora, command_line::Context& context) {
  auto location = std::make_shared<std::string>();
  auto forgets = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "remove", "take a wallpaper away",
                             [=] { remove(*location, *forgets); });
  preferences::addRemovalArguments(command, *location, *forgets);
}

}  // namespace phone
