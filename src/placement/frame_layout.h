// Where on the screen the animated views go.
#pragma once

#include "platform/geometry.h"

namespace lumora {

// The whole screen in points, as wide as it is seen in the present orientation. Any thread.
platform::CGRect screenRectangle();

// The given screen less the dock: the lowest strip of it, or the rightmost one on a phone held
// sideways. Reads the settings; any thread.
platform::CGRect rectangleBesideDock(const platform::CGRect& screen);

}  // namespace lumora
