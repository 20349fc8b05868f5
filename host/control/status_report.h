// What the home screen says of itself to someone who asks. Main thread.
#pragma once

#include <string>

#include "host/home_screen/spring_board.h"

namespace host {

// A JSON object: the screen's state, whether it is covered, orientation, kind, size and scale, how
// often the memory did not suffice for a picture, and under "views" every view of the tree, back to
// front, with its frame, whether it is to be seen, and what it tells of itself.
std::string statusReport(SpringBoard& springBoard);

const char* orientationName(platform::UIInterfaceOrientation orientation);
// Nothing if the name is unknown.
std::optional<platform::UIInterfaceOrientation> orientationNamed(const std::string& name);

}  // namespace host
