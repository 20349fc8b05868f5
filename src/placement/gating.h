// Decides when animated views play: only while the host shows the wallpaper behind them. Any
// thread; the work is queued on tweakQueue.
#pragma once

#include "settings/locations.h"

namespace lumora {

// Resumes or pauses the location's view and brings its host view to the front; installs the view
// first if it is missing or detached. Of an unknown location, no view is told. Does nothing while
// the extension is disabled.
void setWallpaperAnimating(ScreenLocation location, bool animate);

// Resumes every location whose host view is shown; hidden ones are left alone.
void resumeVisibleWallpapers();

}  // namespace lumora
