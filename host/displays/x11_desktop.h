// The outputs of an X11 screen and one window behind all others that shows the wallpaper on them.
// Main thread.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/desktop/desktop_outputs.h"
#include "host/options/desktop_options.h"

namespace host {

class X11Desktop final : public DesktopOutputs {
 public:
  // Opens the window. changed is called when outputs() may give another result. options must
  // outlive the object. Throws std::runtime_error, with the reason, if there is no X server.
  X11Desktop(const DesktopOptions& options, std::function<void()> changed);
  ~X11Desktop() override;
  X11Desktop(const X11Desktop&) = delete;
  X11Desktop& operator=(const X11Desktop&) = delete;

  std::vector<Output> outputs() const override;
  void show(const WallpaperPicture& picture) override;
  void noteChoice() override;
  bool isFading() const override;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
