#include "tool/device/output_devices.h"

#include <algorithm>
#include <system_error>

#include "command_line/failure.h"
#include "platform/linux/files/device_root.h"
#include "tool/support/time_limit.h"

namespace tool {

using command_line::Failure;

namespace {

namespace fs = std::filesystem;

// Not part of a name, which cannot begin with a dot.
constexpr auto preparedPrefix = ".new-";

}  // namespace

std::string problemWithOutputName(const std::string& name) {
  constexpr std::size_t maxLength = 100;
  const bool hasControl = std::ranges::any_of(name, [](unsigned char byte) { return byte < ' '; });
  const bool isName = !name.empty() && name.size() <= maxLength && name.front() != '.' &&
                      name.find('/') == name.npos && !hasControl;
  return isName ? "" : "must be a name as `lumora outputs` lists it";
}

fs::path folderOfOutputs(const DeviceFolder& desktop) {
  return desktop.path() / platform::backend::hostFolderName / "outputs";
}

fs::path folderOfOutput(const DeviceFolder& desktop, const std::string& name) {
  return folderOfOutputs(desktop) / name;
}

fs::path existingFolderOfOutput(const DeviceFolder& desktop, const std::string& name) {
  auto folder = folderOfOutput(desktop, name);
  std::error_code error;
  if (fs::is_directory(folder, error)) return folder;
  throw Failure("output " + name +
                " has no wallpaper of its own; set one with: lumora set GIF --output " + name);
}

bool isPreparedFolder(const fs::path& folder) {
  return folder.filename().string().starts_with(preparedPrefix);
}

FileLock lockOutputs(const DeviceFolder& desktop) {
  FileLock lock(desktop, "outputs.lock");
  if (!lock.take(usualTimeout)) {
    throw Failure("another program is still changing the wallpaper of an output");
  }
  std::error_code error;
  const fs::path folder = folderOfOutputs(desktop);
  fs::create_directory(folder, error);
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (isPreparedFolder(entry.path())) fs::remove_all(entry, error);
  }
  return lock;
}

fs::path preparedFolderOfOutput(const DeviceFolder& desktop, const std::string& name) {
  return folderOfOutputs(desktop) / (preparedPrefix + name);
}

std::vector<std::string> outputsWithOwnWallpaper(const DeviceFolder& desktop) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folderOfOutputs(desktop), error)) {
    const std::string name = entry.path().filename();
    const bool isFolder = entry.symlink_status(error).type() == fs::file_type::directory;
    if (isFolder && problemWithOutputName(name).empty()) names.push_back(name);
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace tool
