// The device's screen, orientation and kind. Any thread.
#pragma once

#include <optional>

#include "platform/geometry.h"

namespace platform {

// Returns the main screen's bounds in points, as in portrait orientation, however the device is
// held. Returns nothing if there is no main screen.
std::optional<CGRect> mainScreenBounds();

// The platform's integers for the orientation of the host's status bar.
enum class UIInterfaceOrientation {
  Portrait = 1,
  PortraitUpsideDown = 2,
  LandscapeRight = 3,
  LandscapeLeft = 4,
};
// Returns the status bar's orientation. Requires a running host application.
UIInterfaceOrientation statusBarOrientation();

enum class UIUserInterfaceIdiom { Phone = 0, Pad = 1 };
// Returns the kind of device, or nothing on a system that cannot name it.
std::optional<UIUserInterfaceIdiom> userInterfaceIdiom();

}  // namespace platform
