// Finds out if the desktop can be seen. It cannot while other windows cover all of it or the X
// server's screen saver runs. Main thread.
#pragma once

#include <functional>
#include <memory>

namespace host {

class DesktopCover {
 public:
  // Watches the windows above the window with this X11 number. Calls changed when isCovered
  // changes. Throws std::runtime_error if there is no X11 screen.
  DesktopCover(unsigned long window, std::function<void()> changed);
  ~DesktopCover();
  DesktopCover(const DesktopCover&) = delete;
  DesktopCover& operator=(const DesktopCover&) = delete;

  bool isCovered() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
