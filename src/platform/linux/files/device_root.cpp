#include "platform/linux/files/device_root.h"

#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::backend {
namespace {

constexpr mode_t directoryMode = 0755;

std::string& rootFolder() {
  static auto* folder = new std::string;
  return *folder;
}

// Returns the components of the path, with "." and ".." resolved.
std::vector<std::string> components(const std::string& path) {
  std::vector<std::string> names;
  std::istringstream stream(path);
  for (std::string name; std::getline(stream, name, '/');) {
    if (name == "..") {
      if (!names.empty()) names.pop_back();
    } else if (!name.empty() && name != ".") {
      names.push_back(name);
    }
  }
  return names;
}

FileDescriptor openRoot() {
  return FileDescriptor(open(rootFolder().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

FileDescriptor openDirectory(int parent, const std::string& name, bool make) {
  if (make) mkdirat(parent, name.c_str(), directoryMode);
  return FileDescriptor(
      openat(parent, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// "a/." and "a/.." name a directory indirectly. They are rejected so that it cannot be deleted that
// way.
bool endsInDots(std::string_view devicePath) {
  devicePath = devicePath.substr(0, devicePath.find_last_not_of('/') + 1);
  return devicePath.ends_with("/.") || devicePath.ends_with("/..");
}

std::optional<ItemPlace> placeOf(const std::string& devicePath, bool make) {
  std::vector<std::string> names = components(devicePath);
  if (names.empty() || rootFolder().empty() || endsInDots(devicePath)) return std::nullopt;
  // The kernel would ignore the NUL and everything after it.
  if (devicePath.find('\0') != devicePath.npos) return std::nullopt;
  if (names.front() == hostFolderName) return std::nullopt;
  std::string last = std::move(names.back());
  names.pop_back();
  FileDescriptor directory = openRoot();
  for (const std::string& name : names) {
    if (!directory) return std::nullopt;
    directory = openDirectory(directory.get(), name, make);
  }
  if (!directory) return std::nullopt;
  return ItemPlace{std::move(directory), std::move(last)};
}

}  // namespace

void setDeviceRoot(const std::string& folder) {
  rootFolder() = folder;
}

FileDescriptor openHostFolder() {
  const FileDescriptor root = openRoot();
  return root ? openDirectory(root.get(), hostFolderName, false) : FileDescriptor();
}

std::optional<ItemPlace> findItem(const std::string& devicePath) {
  return placeOf(devicePath, false);
}

std::optional<ItemPlace> findItemMakingDirectories(const std::string& devicePath) {
  return placeOf(devicePath, true);
}

}  // namespace platform::backend
