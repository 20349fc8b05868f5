// Handing a GIF to the running home screen, and seeing to it that all of its frames are made. The
// home screen works on, and keeps silent about what goes wrong; so this looks at what is there
// afterwards.
#pragma once

#include <functional>

#include "settings/locations.h"
#include "tool/device/device_folder.h"
#include "tool/support/gif_file.h"
#include "tool/support/time_limit.h"

namespace tool {

// Waits until nobody else imports and no frames are being made, puts the GIF into its place, and
// calls handedOver. Then waits until the home screen has made all the frames that the GIF can give,
// and hands it over again where something has cut that short. At the end they play if their screen
// is shown. Returns how many there are. Throws Failure, whose message says what has become of the
// wallpaper.
int importWallpaper(const DeviceFolder& device, const lumora::Location& location,
                    const ChosenGif& gif, const TimeLimit& limit,
                    const std::function<void()>& handedOver);

}  // namespace tool
