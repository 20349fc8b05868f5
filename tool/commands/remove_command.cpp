#include "tool/commands/remove_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "command_line/failure.h"
#include "preferences/commands/removal_arguments.h"
#include "settings/notification_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/device/output_devices.h"
#include "tool/device/wallpaper_names.h"

namespace tool {

using command_line::Failure;

namespace {

void removeWallpaper(const DeviceFolder& device, const std::string& location, bool forgets) {
  auto host = HostConnection::require(device);
  const FileLock lock = lockOutImports(device);
  const bool isAll = location == "all";
  host->post(isAll ? lumora::control::removeGIFFromAllWallpapers
                   : locationNamed(location).removalNotification);
  host->settle();
  if (!isAll) return tellWallpaperName(*host, device);
  if (!forgets) {
    std::printf("%s\n", preferences::allHidden);
    return;
  }
  for (const lumora::Location& each : lumora::locations) host->post(each.removalNotification);
  host->settle();
  tellWallpaperName(*host, device);
}

// The output shows the wallpaper of the desktop again.
void removeOfOutput(const DeviceFolder& desktop, const std::string& output) {
  const auto lock = lockOutputs(desktop);
  const auto folder = existingFolderOfOutput(desktop, output);
  FileLock hostLock(DeviceFolder(folder, IfMissing::Make), FileLock::host);
  const auto unused = preparedFolderOfOutput(desktop, output);
  std::error_code error;
  std::filesystem::rename(folder, unused, error);
  // `lumora run` ends the home screen when the output shows the wallpaper of the desktop.
  if (!error && !hostLock.take(usualTimeout)) {
    throw Failure("the home screen of " + output + " has not ended before the timeout");
  }
  if (!error) std::filesystem::remove_all(unused, error);
  if (error) throw Failure("cannot delete the wallpaper of " + output + ": " + error.message());
  std::printf("%s shows the wallpaper of the desktop\n", output.c_str());
}

}  // namespace

void addRemoveCommand(CLI::App& lumora, Context& context) {
  auto location = std::make_shared<std::string>();
  auto output = std::make_shared<std::string>();
  auto forgets = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "remove", "take a wallpaper away", [=, &context] {
    if (output->empty()) {
      removeWallpaper(context.device(), *location, *forgets);
    } else {
      removeOfOutput(context.device(), *output);
    }
  });
  preferences::addRemovalArguments(command, *location, *forgets)->required(false);
  addOutput(command, *output)
      ->description("the output with this name, which loses its own wallpaper");
  command->parse_complete_callback([=] {
    if (location->empty() == output->empty()) {
      throw CLI::ValidationError("remove", "needs either LOCATION or --output");
    }
  });
}

}  // namespace tool
