#include "tool/device_folder.h"

#include <cstdlib>
#include <fstream>

#include "platform/file_manager.h"
#include "platform/linux/device_root.h"
#include "tool/failure.h"
#include "tool/user_file.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

constexpr auto preferencesDirectory = "/var/mobile/Library/Preferences";

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

fs::path chosenFolder(const std::string& given) {
  if (!given.empty()) return given;
  if (const std::string root = environment("LUMORA_ROOT"); !root.empty()) return root;
  if (const std::string data = environment("XDG_DATA_HOME"); !data.empty()) {
    return fs::path(data) / "lumora";
  }
  const std::string home = environment("HOME");
  if (home.empty()) throw Failure("no folder for the device: say --root DIR or set HOME");
  return fs::path(home) / ".local/share/lumora";
}

}  // namespace

DeviceFolder::DeviceFolder(const std::string& given) {
  const fs::path folder = chosenFolder(given);
  std::error_code error;
  fs::create_directories(folder, error);
  path_ = fs::canonical(folder, error);
  if (error || !fs::is_directory(path_, error)) {
    throw Failure("cannot use " + folder.string() +
                  " as the device's folder: " + (error ? error.message() : "not a folder"));
  }
  platform::setDeviceRoot(path_);
  // Where this fails, the first write says so.
  platform::createDirectoryAtPath(preferencesDirectory);
}

std::optional<std::string> DeviceFolder::busAddress() const {
  std::ifstream file(addressFile());
  std::string address;
  if (!std::getline(file, address) || address.empty()) return std::nullopt;
  return address;
}

void DeviceFolder::setBusAddress(const std::string& address) const {
  writeUserFile(addressFile(), {address.begin(), address.end()});
}

void DeviceFolder::forgetBusAddress() const {
  std::error_code error;
  fs::remove(addressFile(), error);
}

}  // namespace tool
