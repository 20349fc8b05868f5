#include "tool/commands/forget_command.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "command_line/failure.h"
#include "command_line/size_text.h"
#include "platform/linux/files/device_root.h"
#include "preferences/gif_handover.h"
#include "settings/device_paths.h"
#include "settings/locations.h"
#include "tool/device/autostart.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/support/disk_use.h"

namespace tool {

using command_line::Failure;
using command_line::textOfSize;

namespace {

namespace fs = std::filesystem;

void removeAll(const fs::path& path) {
  std::error_code error;
  fs::remove_all(path, error);
  if (error) throw Failure("cannot delete " + path.string() + ": " + error.message());
}

// Deletes the folder and those above it, up to the device folder, as long as they are empty.
void removeEmpty(const DeviceFolder& device, fs::path folder) {
  std::error_code error;
  while (folder != device.path().parent_path() && fs::remove(folder, error)) {
    folder = folder.parent_path();
  }
}

// Returns everything that the library and this program make outside of their own folders.
std::vector<std::string> ownFiles() {
  std::vector<std::string> files{lumora::settingsPath};
  for (const lumora::Location& location : lumora::locations) {
    files.push_back(preferences::incomingPath(location));
  }
  return files;
}

// Deletes only what is its own, because the folder may have other contents, too.
void forget(const DeviceFolder& device) {
  std::error_code error;
  const fs::path own = device.path() / platform::backend::hostFolderName;
  if (!fs::is_directory(own, error)) {
    std::printf("nothing is stored in %s\n", device.path().c_str());
    return;
  }
  FileLock lock(device, FileLock::host);
  if (HostConnection::find(device) || !lock.take(Seconds(0))) {
    throw Failure("a home screen is running for " + device.path().string() +
                  "; stop it with: lumora stop");
  }
  const std::uint64_t before = diskUse(device.path());
  const auto onDisk = [&device](const std::string& path) {
    return device.path() / fs::path(path).relative_path();
  };
  for (const std::string& file : ownFiles()) removeAll(onDisk(file));
  removeAll(onDisk(lumora::libraryDirectory));
  removeAll(own);
  for (const std::string& file : ownFiles()) removeEmpty(device, onDisk(file).parent_path());
  removeEmpty(device, onDisk(lumora::libraryDirectory).parent_path());
  const std::uint64_t after = fs::exists(device.path()) ? diskUse(device.path()) : 0;
  std::printf("deleted %s in %s\n", textOfSize(before - after).c_str(), device.path().c_str());
  if (!autostartFiles().empty()) {
    std::printf("autostart is still on; turn it off with: lumora autostart off\n");
  }
}

}  // namespace

void addForgetCommand(CLI::App& lumora, Context& context) {
  addCommand(lumora, context, "forget", "delete all wallpapers, frames and settings",
             [&context] { forget(context.device()); });
}

}  // namespace tool
