// Decides when animated views play: only while the host shows the wallpaper behind them. Any
// thread; nothing here waits.
#pragma once

#include "settings/locations.h"

namespace lumora {

// Has the location's view resume or pause and brings its host view to the front; installs the view
// first if it is missing or detached. Does nothing while the extension is disabled.
void setWallpaperAnimating(ScreenLocation location, bool animate);

// Queues the visibility sweep: every location whose host view is shown is resumed, hidden ones are
// left alone.
void resumeVisibleWallpapers();

}  // namespace lumora
