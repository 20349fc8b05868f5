// Choosing a GIF for a location.
#pragma once

#include <string>

#include "settings/screen_location.h"
#include "tool/gif_file.h"
#include "tool/host_connection.h"

namespace tool {

// Hands the GIF to the home screen: stores it under its incoming name, with the settings that say
// so, and notifies. Nobody else must do so meanwhile. Throws Failure if it cannot be stored or is
// not taken in.
void handOver(HostConnection& host, lumora::ScreenLocation location, const ChosenGif& gif,
              const TimeLimit& limit);

// The whole of `lumora set`: hands over, waits, unless told not to, until the view is ready, and
// has it play if its screen is shown.
void setWallpaper(const DeviceFolder& device, lumora::ScreenLocation location,
                  const std::string& path, bool waits, Seconds timeout);

}  // namespace tool
