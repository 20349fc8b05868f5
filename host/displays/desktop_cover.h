// Finds out which part of an X11 desktop can be seen. None of it can while the X server's screen
// saver runs. Main thread.
#pragma once

#include <functional>
#include <memory>

#include <cairo.h>

namespace host {

class DesktopCover {
 public:
  // Watches the windows above the window with this X11 number. Calls changed when isCovered may
  // give another result. Throws std::runtime_error if there is no X11 screen.
  DesktopCover(unsigned long window, std::function<void()> changed);
  ~DesktopCover();
  DesktopCover(const DesktopCover&) = delete;
  DesktopCover& operator=(const DesktopCover&) = delete;

  // Returns true if other windows cover all of this part of the screen, in pixels.
  bool isCovered(const cairo_rectangle_int_t& part) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
