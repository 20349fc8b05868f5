// The folder that is a device: its files, and where its running home screen is to be found.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/device_root.h"

namespace tool {

class DeviceFolder {
 public:
  // The folder given, else $LUMORA_ROOT, else lumora in the user's data folder. It is made, with
  // the places that every device has, and becomes the root of all device paths. Throws Failure.
  explicit DeviceFolder(const std::string& given);

  const std::filesystem::path& path() const { return path_; }

  // Locked by whoever runs the device's home screen.
  std::filesystem::path hostLockFile() const { return hostFolder() / "lock"; }
  // What the bus daemon has complained of.
  std::filesystem::path busLog() const { return hostFolder() / "bus.log"; }
  // Locked by whoever hands a GIF to the home screen.
  std::filesystem::path handOverLockFile() const { return hostFolder() / "hand-over.lock"; }
  // Of the bus of the device's home screen; nothing if none was ever started, or the last one has
  // ended in order.
  std::optional<std::string> busAddress() const;
  void setBusAddress(const std::string& address) const;
  void forgetBusAddress() const;

 private:
  std::filesystem::path hostFolder() const { return path_ / platform::hostFolderName; }
  std::filesystem::path addressFile() const { return hostFolder() / "bus"; }

  std::filesystem::path path_;
};

}  // namespace tool
