#include "tool/commands/remove_command.h"

#include <cstdio>
#include <memory>

#include "settings/notification_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"

namespace tool {
namespace {

void removeWallpaper(const DeviceFolder& device, const std::string& location) {
  auto host = HostConnection::require(device);
  const FileLock lock = lockOutImports(device);
  host->post(location == "all" ? lumora::control::removeGIFFromAllWallpapers
                               : locationNamed(location).removalNotification);
  host->settle();
  if (location == "all") {
    std::printf(
        "all wallpapers taken down; their files stay, and showing a screen brings them back\n");
  }
}

}  // namespace

void addRemoveCommand(CLI::App& lumora, Context& context) {
  auto location = std::make_shared<std::string>();
  auto* command =
      addCommand(lumora, context, "remove", "take a wallpaper away",
                 [&context, location] { removeWallpaper(context.device(), *location); });
  addChoice(command, "LOCATION", *location, {"shared", "lockscreen", "homescreen", "all"},
            "wallpaper to remove with its GIF; with all, the GIFs stay");
}

}  // namespace tool
