// An import that an impatient user cannot cut in half.
#pragma once

#include "tool/device/wallpaper_import.h"

namespace tool {

// Does importWallpaper in a process of its own, which goes on without this one as soon as it has
// begun to change something: whether the limit passes, Ctrl-C is pressed, or the terminal is
// closed. Shows the progress. Returns when all frames are made or, if they are not waited for, when
// the home screen has the GIF. Throws Failure; one that comes of the limit says what still goes on.
// On SIGINT, SIGTERM or SIGHUP it says so and ends this process. To be called before any thread is
// started.
void importInOwnProcess(const DeviceFolder& device, const lumora::Location& location,
                        const ChosenGif& gif, int frames, const TimeLimit& limit,
                        bool waitsForFrames);

}  // namespace tool
