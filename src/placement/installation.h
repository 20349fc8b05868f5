// Puts the animated views into the host's wallpaper.
#pragma once

namespace lumora {

// Queues one installation on tweakQueue and returns; any thread. The installation finds the host's
// wallpaper views of the current mode, makes or takes over one animated view for each, places it
// clear of the dock, scales it, hands it its GIF and notes in the settings what is set. It ends
// silently, without any change, if the GIF that the settings point at is missing or damaged.
void updateWallpaperImages();

}  // namespace lumora
