// Shows the device in an X11 window that takes keys and gestures. While none of the window can be
// seen, the home screen counts as covered and nothing is drawn. Main thread.
#pragma once

#include <memory>

#include "host/home_screen/spring_board.h"

namespace host {

class WindowDisplay {
 public:
  // Opens the window and makes the run loop draw into it. springBoard must outlive this object.
  // Throws std::runtime_error, with the reason, if the window cannot be opened.
  explicit WindowDisplay(SpringBoard& springBoard);
  ~WindowDisplay();
  WindowDisplay(const WindowDisplay&) = delete;
  WindowDisplay& operator=(const WindowDisplay&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
