// Makes animated views play only while the host shows its wallpaper. Any thread; the work is queued
// on tweakQueue. Failures are silent.
#pragma once

#include "settings/locations.h"

namespace lumora {

// Resumes or pauses the location's view and brings its host view to the front. Installs the view
// first if there is none or if it has no superview. For an unknown location, no view is resumed or
// paused. Does nothing while "ENABLED" is off.
void setWallpaperAnimating(ScreenLocation location, bool shouldAnimate);

// Makes the host's hiding and showing of a wallpaper call setWallpaperAnimating from now on. At
// launch.
void gateWallpapers();

// Resumes the view of every location whose host view is not hidden.
void resumeVisibleWallpapers();

}  // namespace lumora
