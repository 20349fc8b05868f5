// The screen in a window, with the usual keys of a phone simulator. Main thread.
#pragma once

#include <memory>

#include "host/spring_board.h"

namespace host {

class WindowDisplay {
 public:
  // Opens the window and has the run loop draw into it. Throws std::runtime_error, with the reason,
  // if there is no X11 screen to open it on.
  explicit WindowDisplay(SpringBoard& springBoard);
  ~WindowDisplay();
  WindowDisplay(const WindowDisplay&) = delete;
  WindowDisplay& operator=(const WindowDisplay&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
