// An output of the desktop: a monitor, or what the display system treats as one.
#pragma once

#include <string>

namespace host {

struct Output {
  // The display system's name, such as "HDMI-1".
  std::string name;
  // Its place on the desktop, in the display system's units: pixels on X11, logical pixels on
  // Wayland.
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  // Pixels per unit.
  double scale = 1;
  // True if nothing of it can be seen.
  bool isUnseen = false;
  // True if the options choose it, even if it is excepted later.
  bool isWanted = true;
  // True if the wallpaper is to be shown on it.
  bool isChosen = true;
  // True once the wallpaper is shown on it.
  bool isPainted = false;

  friend bool operator==(const Output&, const Output&) = default;
};

}  // namespace host
