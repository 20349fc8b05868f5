// The folder that holds the device's files. Whatever a device path contains, ".." or symbolic
// links, nothing outside of the folder is reached: links are never followed, and ".." at the root
// stays there. Any thread.
#pragma once

#include <optional>
#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// The folder below the root that holds the host's own files; no device path leads there.
constexpr auto hostFolderName = ".host";

// The directory that holds an item, and the item's name in it; the item itself may be missing.
struct ItemLocation {
  FileDescriptor directory;
  std::string name;
};

// Requires an existing folder; with "/", device paths are paths of this machine. Call it once,
// before any file is used.
void setDeviceRoot(const std::string& folder);

// Returns no descriptor if the host's folder is missing or a link.
FileDescriptor openHostFolder();

// Returns nothing if the path is the root itself or in the host's folder, if it contains a NUL, or
// if a directory on the way is missing or is a link.
std::optional<ItemLocation> locateItem(const std::string& devicePath);
// The same; creates missing directories on the way.
std::optional<ItemLocation> locateItemMakingDirectories(const std::string& devicePath);

}  // namespace platform::backend
