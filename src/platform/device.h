// Screen, orientation and kind of the device. Any thread.
#pragma once

#include <optional>

#include "platform/geometry.h"

namespace platform {

// The main screen's bounds in points, those of the upright device; nothing without a main screen.
std::optional<CGRect> mainScreenBounds();

// How the host's status bar lies, by the platform's integers.
enum class UIInterfaceOrientation {
  Portrait = 1,
  PortraitUpsideDown = 2,
  LandscapeRight = 3,
  LandscapeLeft = 4,
};
UIInterfaceOrientation statusBarOrientation();

enum class UIUserInterfaceIdiom { Phone = 0, Pad = 1 };
// Nothing on a device that does not answer the question.
std::optional<UIUserInterfaceIdiom> userInterfaceIdiom();

}  // namespace platform
