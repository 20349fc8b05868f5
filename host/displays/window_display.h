// The screen in a window: one of its own, with the usual keys of a phone simulator, or the one
// behind all others on the desktop. Main thread.
#pragma once

#include <memory>

#include "host/home_screen/spring_board.h"

namespace host {

class WindowDisplay {
 public:
  // Opens the window and has the run loop draw into it. Throws std::runtime_error, with the reason,
  // if there is no X11 screen to open it on.
  explicit WindowDisplay(SpringBoard& springBoard);
  ~WindowDisplay();
  WindowDisplay(const WindowDisplay&) = delete;
  WindowDisplay& operator=(const WindowDisplay&) = delete;

  // The window's number at the X server.
  unsigned long number() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
