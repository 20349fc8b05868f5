// The settings of a view's location, read from the file by each call. If location is nullptr, the
// functions return the default. Any thread.
#pragma once

#include "settings/locations.h"

namespace lumora {

float speedOf(const Location* location);
float alphaOf(const Location* location);
float blurOf(const Location* location);

}  // namespace lumora
