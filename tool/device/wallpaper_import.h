// Giving a GIF to the running home screen, and making sure that all of its frames are made. The
// home screen goes on and is silent about what fails; so this looks at what is there afterwards.
#pragma once

#include <functional>

#include "settings/locations.h"
#include "tool/device/device_folder.h"
#include "tool/support/gif_file.h"
#include "tool/support/time_limit.h"

namespace tool {

// Longer than any GIF takes.
constexpr Seconds maxImportTime{3600};

struct ImportProgress {
  // Before this is true, nothing on the device has been changed. After that the import must not be
  // ended from outside.
  bool isChanging = false;
  // The home screen has the GIF.
  bool isHandedOver = false;
  int framesFound = 0;
  // What has become of the wallpaper, for the user: "nothing was changed".
  const char* state = "nothing was changed";
};

// Waits until nobody else imports and no frames are being made, and puts the GIF into place: within
// the limit. Then waits, for maxImportTime at most, until the home screen has made the given number
// of frames, and hands the GIF over again where something has cut that short. At the end the frames
// play if their screen is shown. report is called whenever there is progress. Throws Failure, whose
// message says what has become of the wallpaper.
void importWallpaper(const DeviceFolder& device, const lumora::Location& location,
                     const ChosenGif& gif, int frames, const TimeLimit& limit,
                     const std::function<void(const ImportProgress&)>& report);

}  // namespace tool
