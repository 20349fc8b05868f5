// Gives a GIF to the running home screen and verifies that all of its frames are made. The home
// screen does not report failures, so this checks the files instead.
#pragma once

#include <functional>
#include <string>

#include "settings/locations.h"
#include "tool/device/device_folder.h"
#include "tool/support/gif_file.h"
#include "tool/support/time_limit.h"

namespace tool {

// Longer than any import takes.
constexpr Seconds maxImportTime{3600};

// What to import.
struct Import {
  const lumora::Location& location;
  const ChosenGif& gif;
  // The number of frames that can be shown.
  int frames;
  // Until the home screen has the GIF.
  TimeLimit limit;
  // False for a device that is not in use yet, for which a failure has no consequences.
  bool isInUse = true;
};

struct ImportProgress {
  // False as long as nothing on the device has been changed. Once it is true, the importing process
  // must not be killed.
  bool isChanging = false;
  // True once the home screen has the GIF.
  bool isHandedOver = false;
  int framesFound = 0;
  // The state of the wallpaper, in words that can end an error message.
  const char* state = "nothing was changed";
};

// Waits within the limit until no other import is running and no frames are being made, and puts
// the GIF into place. Then waits, for maxImportTime at most, until the home screen has made all
// frames; if another program's request interrupts that, starts it again. Afterwards the GIF plays
// if its screen is shown. Calls report on any progress. Throws Failure, whose message ends with the
// state of the wallpaper, after it has restored the old wallpaper if the new one cannot be used.
void importWallpaper(const DeviceFolder& device, const Import& import,
                     const std::function<void(const ImportProgress&)>& report);

}  // namespace tool
