// The wallpapers that outputs of a desktop have of their own. Each is a device of its own, in the
// folder .host/outputs/NAME of the desktop's device folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tool/device/device_folder.h"
#include "tool/device/file_lock.h"

namespace tool {

// Returns what is wrong with the name of an output, or "".
std::string problemWithOutputName(const std::string& name);

// Returns the folder that contains those of all outputs. It may be missing.
std::filesystem::path folderOfOutputs(const DeviceFolder& desktop);
// Returns the device folder of an output. It may be missing. Requires a name without a problem.
std::filesystem::path folderOfOutput(const DeviceFolder& desktop, const std::string& name);
// The same, but throws Failure if it is missing.
std::filesystem::path existingFolderOfOutput(const DeviceFolder& desktop, const std::string& name);
// Returns the folder in which the wallpaper of an output is prepared, not yet in use.
std::filesystem::path preparedFolderOfOutput(const DeviceFolder& desktop, const std::string& name);

// Returns true for a folder that preparedFolderOfOutput returns.
bool isPreparedFolder(const std::filesystem::path& folder);

// Returns the lock for adding and removing wallpapers of outputs, held. Deletes what interrupted
// programs have left. Throws Failure if another program holds the lock for too long.
FileLock lockOutputs(const DeviceFolder& desktop);

// Returns the names of all outputs that have a wallpaper of their own, sorted.
std::vector<std::string> outputsWithOwnWallpaper(const DeviceFolder& desktop);

}  // namespace tool
