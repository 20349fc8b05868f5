// The names of the GIFs that were set with this program, for people.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "settings/locations.h"
#include "tool/device/device_folder.h"
#include "tool/device/host_connection.h"

namespace tool {

// Remembers the name of the location's GIF. A failure leaves it without a name.
void nameWallpaper(const DeviceFolder& device, const lumora::Location& location,
                   const std::string& name);

// Returns the name, or nothing if there is none or the GIF has been replaced since.
std::optional<std::string> nameOfWallpaper(const DeviceFolder& device,
                                           const lumora::Location& location);

// Tells the home screen the names of the GIFs that the mode uses. Throws Failure if it does not
// answer.
void tellWallpaperName(HostConnection& host, const DeviceFolder& device);

// Returns the size of the location's GIF in bytes, 0 if there is none.
std::uint64_t sizeOfWallpaper(const lumora::Location& location);

}  // namespace tool
