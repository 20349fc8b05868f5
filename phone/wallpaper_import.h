// Gives the home screen a new GIF.
#pragma once

#include "phone/chosen_gif.h"
#include "settings/locations.h"

namespace phone {

enum class WaitFor { Handover, Frames };

// Waits until no frames are being made, puts the GIF where the home screen looks for it, and waits
// until the home screen has taken it; then, if wanted, until it has made all frames, with a
// progress bar. silence: how many seconds to wait for the next frame. Throws Failure, whose message
// tells what has become of the wallpaper: with NoHost, and without a change, if no home screen
// takes the GIF.
void importWallpaper(const lumora::Location& location, const ChosenGif& gif, WaitFor end,
                     double silence);

}  // namespace phone
