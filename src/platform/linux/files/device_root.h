// The folder that contains the device's files. No device path leads out of it: symbolic links are
// never followed, and ".." at the root stays at the root. Any thread.
#pragma once

#include <optional>
#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// The folder below the root for the host's own files, which no device path can name.
constexpr auto hostFolderName = ".host";

// The directory of an item, opened as a path (O_PATH), and the item's name in it. The item itself
// may be missing.
struct ItemPlace {
  FileDescriptor directory;
  std::string name;
};

// Sets the folder, which must exist; "/" makes device paths paths of this machine. Call it once,
// before any file is used. Until then no device path leads to an item.
void setDeviceRoot(const std::string& folder);

// Opens the host's folder as a path (O_PATH). Returns no descriptor if it is missing or a link.
FileDescriptor openHostFolder();

// Opens the directory of an item. Returns nothing if the path is the root or in the host's folder,
// ends in "/." or "/..", or contains a NUL, or if a directory on the way is missing or is a link.
std::optional<ItemPlace> findItem(const std::string& devicePath);
// Does the same, and creates missing directories on the way.
std::optional<ItemPlace> findItemMakingDirectories(const std::string& devicePath);

}  // namespace platform::backend
