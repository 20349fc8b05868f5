// The folder that is a device: its files, and where its running home screen is to be found.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace tool {

class DeviceFolder {
 public:
  // The folder given, else $LUMORA_ROOT, else lumora in the user's data folder. It is made, with
  // the places that every device has, and becomes the root of all device paths. Throws Failure.
  explicit DeviceFolder(const std::string& given);

  const std::filesystem::path& path() const { return path_; }

  // The folder in it that is the programs' own: nobody else may look into it, and nothing in it is
  // followed. Throws Failure if it cannot be had.
  int hostFolder() const;

  // Of the bus of the device's home screen; nothing if none was ever started, or the last one has
  // ended in order. Throws Failure if the device belongs to another user.
  std::optional<std::string> busAddress() const;
  void setBusAddress(const std::string& address) const;
  void forgetBusAddress() const;

 private:
  std::filesystem::path path_;
  platform::backend::FileDescriptor hostFolder_;
  int hostFolderError_ = 0;
};

}  // namespace tool
