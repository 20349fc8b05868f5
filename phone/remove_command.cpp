#include "phone/remove_command.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

#include "phone/command_lock.h"
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
using platform::DarwinNotifyCenter;

// Returns once the condition holds. Throws Failure if it does not. state: what has become of the
// wallpaper, in words.
template <typename Condition>
void await(Condition condition, const char* state) {
  Views views;
  for (const Stopwatch waiting; !condition();) {
    if (waiting.seconds() > patience) reportSilence(state);
    views.hear();
  }
}

void removeGif(const Location& location) {
  DarwinNotifyCenter::post(location.removalNotification);
  await([&] { return !platform::fileExistsAtPath(location.gifPath); },
        "the wallpaper was not removed");
}

void hideAll() {
  DarwinNotifyCenter::post(lumora::control::removeGIFFromAllWallpapers);
  await(
      [] {
        return std::none_of(lumora::locations.begin(), lumora::locations.end(),
                            [](const Location& location) { return location.getWallpaperSet(); });
      },
      "the wallpapers were not hidden");
}

void remove(const std::string& location, bool forgets) {
  workAsOwner();
  const CommandLock lock(patience);
  if (location != "all") return removeGif(preferences::locationNamed(location));
  hideAll();
  if (!forgets) {
    std::printf("%s\n", preferences::allHidden);
    return;
  }
  for (const Location& each : lumora::locations) removeGif(each);
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
