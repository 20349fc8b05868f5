// What the shared commands need of the program that has them.
#pragma once

#include <functional>

#include "preferences/changes.h"

namespace preferences {

// All may throw Failure.
struct DeviceActions {
  // Called before the device's files are read, or read and changed.
  std::function<void()> open;
  std::function<void()> openToChange;
  // Store a change, which a running home screen follows: one that affects any wallpaper, one for
  // the screens of a phone only, and one of the mode. They open the device themselves.
  std::function<void(const Change&)> make;
  std::function<void(const Change&)> makeOnPhone;
  std::function<void(const Change&)> changeMode;
};

}  // namespace preferences
