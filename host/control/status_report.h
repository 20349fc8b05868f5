// Describes the state of the home screen. Main thread.
#pragma once

#include <string>

#include "host/home_screen/spring_board.h"

namespace host {

// Returns a JSON object with the keys of status_keys.h.
std::string statusReport(SpringBoard& springBoard);

// Returns "portrait", "left", "right" or "upside-down".
const char* orientationName(platform::UIInterfaceOrientation orientation);
// Returns nothing if the name is unknown.
std::optional<platform::UIInterfaceOrientation> orientationNamed(const std::string& name);

}  // namespace host
