// What the choice of a GIF for one screen means for the other.
#pragma once

#include "settings/locations.h"

namespace preferences {

// Returns "shared", "lock screen" or "home screen".
const char* placeName(const lumora::Location& location);

// Returns the screen on which the shared wallpaper is no longer shown once the location gets its
// own GIF, or nullptr if there is none.
const lumora::Location* otherLocationThatLoses(const lumora::Location& location);
// Tells the user that this has happened.
void printLossOf(const lumora::Location& other);

}  // namespace preferences
