// The device folder: a device's files, and the address of its running home screen.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace tool {

// What to do with a device folder that does not exist.
enum class IfMissing { Keep, Make };

class DeviceFolder {
 public:
  // Uses the given folder; if that is "", $LUMORA_ROOT; else lumora in $XDG_DATA_HOME, if that is
  // absolute, or ~/.local/share. Makes it the root of all device paths of the process. With Make,
  // makes what is missing: the folder, those above it, ".host" in it and the directory of the
  // settings. Throws Failure if the folder cannot be used; a failure to make something in it shows
  // when that is used.
  explicit DeviceFolder(const std::string& given, IfMissing ifMissing = IfMissing::Keep);

  // Absolute, and without links as far as it exists.
  const std::filesystem::path& path() const { return path_; }

  // Returns a descriptor of ".host", the programs' own folder in the device folder, which only this
  // user may enter. This object owns the descriptor. Throws Failure if the folder is missing or
  // cannot be used.
  int hostFolder() const;

  // Small text files in ".host", by name. note returns nothing if there is none or it is empty. All
  // throw Failure if hostFolder does, except note for a missing folder, and setNote also if it
  // cannot write.
  std::optional<std::string> note(const std::string& name) const;
  void setNote(const std::string& name, const std::string& text) const;
  void removeNote(const std::string& name) const;

  // The stored address of the home screen's bus. Returns nothing if no home screen was started, or
  // if the last one was stopped; the address stays if it was killed. Throw as notes do.
  std::optional<std::string> busAddress() const;
  void setBusAddress(const std::string& address) const;
  void forgetBusAddress() const;

 private:
  // Opens ".host", unless it is open: it may be made later than this object. Returns 0 or the
  // error.
  int openHostFolder() const;

  std::filesystem::path path_;
  mutable platform::backend::FileDescriptor hostFolder_;
  // Why ".host" could not be made, or 0.
  int makingError_ = 0;
};

}  // namespace tool
