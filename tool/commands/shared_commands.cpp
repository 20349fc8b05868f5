#include "tool/commands/shared_commands.h"

#include "preferences/commands/live_settings_commands.h"
#include "preferences/commands/settings_commands.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/device/wallpaper_names.h"

namespace tool {
namespace {

using preferences::Change;

// Makes the change. If a home screen is running, waits until it has followed.
void make(const DeviceFolder& device, const Change& change) {
  store(change);
  auto host = HostConnection::find(device);
  if (!host) return;
  for (const char* name : change.notifications) host->post(name);
  host->settle();
}

void requirePhone(const DeviceFolder& device) {
  if (auto host = HostConnection::find(device)) host->requirePhone();
}

void makeOnPhone(const DeviceFolder& device, const Change& change) {
  requirePhone(device);
  make(device, change);
}

void changeMode(const DeviceFolder& device, const Change& change) {
  requirePhone(device);
  // An import changes the mode, too.
  const FileLock lock = lockOutImports(device);
  make(device, change);
  if (auto host = HostConnection::find(device)) tellWallpaperName(*host, device);
}

}  // namespace

void addSharedCommands(CLI::App& lumora, Context& context) {
  const preferences::DeviceActions device{
      .open = [&context] { context.device(); },
      .openToChange = [&context] { context.madeDevice(); },
      .make = [&context](const Change& change) { make(context.madeDevice(), change); },
      .makeOnPhone =
          [&context](const Change& change) { makeOnPhone(context.madeDevice(), change); },
      .changeMode = [&context](const Change& change) { changeMode(context.madeDevice(), change); },
  };
  addOutput(addSettingsCommands(lumora, context, device), context.output);
  for (CLI::App* command : addLiveSettingsCommands(lumora, context, device)) {
    addOutput(command, context.output);
  }
}

}  // namespace tool
