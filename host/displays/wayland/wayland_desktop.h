// The outputs of a Wayland session whose compositor has the layer shell. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/desktop/desktop_outputs.h"
#include "host/displays/wayland/sway_windows.h"
#include "host/displays/wayland/toplevels.h"
#include "host/displays/wayland/wayland_output.h"

namespace host::wayland {

class WaylandDesktop final : public DesktopOutputs {
 public:
  // Connects to the compositor. changed is called when outputs() may give another result, and ended
  // if the connection is lost. options must outlive the object. Throws std::runtime_error, with the
  // reason, if there is no compositor or it has no layer shell.
  WaylandDesktop(const DesktopOptions& options, std::function<void()> changed,
                 std::function<void()> ended);
  ~WaylandDesktop() override;
  WaylandDesktop(const WaylandDesktop&) = delete;
  WaylandDesktop& operator=(const WaylandDesktop&) = delete;

  std::vector<Output> outputs() const override;
  void show(const WallpaperPicture& picture) override;
  void noteChoice() override { noteChange(); }
  bool isFading() const override;

 private:
  struct Listeners;

  void addGlobal(std::uint32_t registryName, const std::string& interface, std::uint32_t version);
  void removeGlobal(std::uint32_t registryName);
  void startOutputs();
  void noteChange();
  bool isCovered(const WaylandOutput& output) const;
  void updateCovers();
  bool handleEvents();
  void setAlarm();

  const DesktopOptions& options_;
  const std::function<void()> changed_;
  const std::function<void()> ended_;
  const Display display_;
  Registry registry_;
  Globals globals_;
  std::vector<std::unique_ptr<WaylandOutput>> outputs_;
  bool hasGlobals_ = false;
  // True if changed_ has been called since events were last looked for.
  bool hasChanged_ = false;
  SwayWindows sway_;
  // The source of the same knowledge on other compositors, which tells less.
  std::optional<Toplevels> toplevels_;
};

}  // namespace host::wayland
