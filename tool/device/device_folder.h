// The device folder: a device's files, and the address of its running home screen.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace tool {

class DeviceFolder {
 public:
  // Uses the given folder; if that is "", $LUMORA_ROOT; else lumora in $XDG_DATA_HOME or
  // ~/.local/share. Makes it the root of all device paths of the process. Makes what is missing:
  // the folder, those above it, ".host" in it and the directory of the settings. Throws Failure if
  // the folder cannot be used; a failure to make something in it shows when that is used.
  explicit DeviceFolder(const std::string& given);

  // Absolute, without links.
  const std::filesystem::path& path() const { return path_; }

  // Returns a descriptor of ".host", the programs' own folder in the device folder, which only this
  // user may enter. This object owns the descriptor. Throws Failure if the folder cannot be used.
  int hostFolder() const;

  // The stored address of the home screen's bus. Returns nothing if no home screen was started, or
  // if the last one was stopped; the address stays if it was killed. All throw Failure if
  // hostFolder does, and setBusAddress also if it cannot write.
  std::optional<std::string> busAddress() const;
  void setBusAddress(const std::string& address) const;
  void forgetBusAddress() const;

 private:
  std::filesystem::path path_;
  platform::backend::FileDescriptor hostFolder_;
  int hostFolderError_ = 0;
};

}  // namespace tool
