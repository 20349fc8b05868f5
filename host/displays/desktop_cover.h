// Whether anything of the desktop can be seen: not while other windows cover the whole of it, and
// not while the X server's screen saver runs. Main thread.
#pragma once

#include <functional>
#include <memory>

namespace host {

class DesktopCover {
 public:
  // Watches what stands before the window with this X11 number. changed is called when isCovered
  // may give something else than before. Throws std::runtime_error without an X11 screen.
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
