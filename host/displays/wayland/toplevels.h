// Follows the windows that a Wayland compositor tells of by its interface for taskbars. Main
// thread.
#pragma once

#include <cstdint>
#include <map>
#include <set>

#include "host/displays/wayland/wayland_objects.h"

namespace host::wayland {

class Toplevels {
 public:
  // Listens from the next reading of events on.
  explicit Toplevels(ToplevelManager manager);
  Toplevels(const Toplevels&) = delete;
  Toplevels& operator=(const Toplevels&) = delete;

  // Returns true if the active window, or the one to which it belongs, is maximized or full-screen
  // on the output with this registry name. The interface does not tell on which workspace a window
  // is, so that another window that fills an output may be hidden together with its workspace. Only
  // the active one is known to be seen. If a window is on several outputs, it is not known which of
  // them it fills.
  bool isCovered(std::uint32_t output) const;

  // Returns true if isCovered may give another result than at the last call.
  bool takeChange();

 private:
  using Handle = zwlr_foreign_toplevel_handle_v1*;
  struct Window {
    ToplevelHandle object;
    // The registry names of the outputs on which it is.
    std::set<std::uint32_t> outputs;
    // The window to which it belongs, which may be gone.
    Handle parent = nullptr;
    bool isFull = false;
    bool isMinimized = false;
    bool isActive = false;

    bool fills(std::uint32_t output) const {
      return isFull && !isMinimized && outputs == std::set{output};
    }
  };
  struct Listeners;

  void add(Handle handle);
  void noteStates(Window& window, const wl_array& states);

  const ToplevelManager manager_;
  std::map<Handle, Window> windows_;
  bool hasChanged_ = false;
};

}  // namespace host::wayland
