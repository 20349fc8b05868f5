// Shows the screen on the X11 desktop, behind all windows. It counts as covered while the desktop
// cannot be seen or the session is locked or inactive. Main thread.
#pragma once

#include "host/displays/desktop_cover.h"
#include "host/displays/session_watch.h"
#include "host/displays/window_display.h"

namespace host {

class DesktopDisplay {
 public:
  // springBoard must outlive this object. Throws std::runtime_error, with the reason, if there is
  // no X11 screen.
  explicit DesktopDisplay(SpringBoard& springBoard);

 private:
  void update();

  SpringBoard& springBoard_;
  WindowDisplay window_;
  DesktopCover cover_;
  SessionWatch session_;
};

}  // namespace host
