// What the settings say for the location of a view, read afresh by every call. Without a location,
// nullptr, each returns the default and reads nothing. Any thread.
#pragma once

#include "settings/locations.h"

namespace lumora {

float speedOf(const Location* location);
float alphaOf(const Location* location);
float blurOf(const Location* location);

}  // namespace lumora
