// Measures the part of a Wayland output that panels leave to windows. Main thread.
#pragma once

#include <functional>

#include "host/displays/wayland/wayland_objects.h"

namespace host::wayland {

class UsableArea {
 public:
  // Asks the compositor by a layer surface that is never shown. Calls changed when the size may be
  // another.
  UsableArea(const Globals& globals, wl_output* output, std::function<void()> changed);
  UsableArea(const UsableArea&) = delete;
  UsableArea& operator=(const UsableArea&) = delete;

  // In logical pixels; 0 until the compositor has answered.
  int width() const { return width_; }
  int height() const { return height_; }

 private:
  struct Listeners;

  void configure(std::uint32_t serial, int width, int height);

  const std::function<void()> changed_;
  const Surface surface_;
  const LayerSurface layerSurface_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace host::wayland
