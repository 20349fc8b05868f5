#include "tool/commands/forget_command.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/linux/files/device_root.h"
#include "tool/device/host_connection.h"
#include "tool/device/output_devices.h"
#include "tool/support/disk_use.h"
#include "tool/support/failure.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

// Deletes only what this program makes, because the folder may have other contents, too.
void forget(const DeviceFolder& device) {
  std::error_code error;
  if (!fs::is_directory(device.path() / platform::backend::hostFolderName, error)) {
    std::printf("nothing is stored in %s\n", device.path().c_str());
    return;
  }
  FileLock lock(device, FileLock::host);
  if (HostConnection::find(device) || !lock.take(Seconds(0))) {
    throw Failure("a home screen is running for " + device.path().string() +
                  "; stop it with: lumora stop");
  }
  const std::uint64_t before = diskUse(device.path());
  for (const fs::path& folder : {device.path() / "var/mobile", folderOfOutputs(device),
                                 device.path() / platform::backend::hostFolderName}) {
    fs::remove_all(folder, error);
    if (error) throw Failure("cannot delete " + folder.string() + ": " + error.message());
  }
  // Fails if there is something else in them.
  for (const fs::path& folder : {device.path() / "var", device.path()}) fs::remove(folder, error);
  const std::uint64_t after = fs::exists(device.path()) ? diskUse(device.path()) : 0;
  std::printf("deleted %s in %s\n", textOfSize(before - after).c_str(), device.path().c_str());
}

}  // namespace

void addForgetCommand(CLI::App& lumora, Context& context) {
  addCommand(lumora, context, "forget", "delete all wallpapers, frames and settings",
             [&context] { forget(context.device()); });
}

}  // namespace tool
