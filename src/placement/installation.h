// Installs the animated views in the host's wallpaper views.
#pragma once

namespace lumora {

// Queues an installation on tweakQueue and returns. Any thread.
//
// The installation finds the host's wallpaper views of the current mode, creates or reuses an
// animated view for each, sets its frame and scaling, passes it its GIF, and records in the
// settings what is set. It does nothing, silently, if the GIF that is selected in the settings is
// missing or damaged.
void updateWallpaperImages();

}  // namespace lumora
