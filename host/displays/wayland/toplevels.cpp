#include "host/displays/wayland/toplevels.h"

#include <algorithm>
#include <span>
#include <utility>

#include "host/displays/wayland/wayland_output.h"

namespace host::wayland {

struct Toplevels::Listeners {
  static Toplevels& of(void* data) { return *static_cast<Toplevels*>(data); }
  static Window& at(void* data, Handle handle) { return of(data).windows_.at(handle); }

  static constexpr zwlr_foreign_toplevel_manager_v1_listener manager = {
      .toplevel = [](void* data, zwlr_foreign_toplevel_manager_v1*,
                     Handle handle) { of(data).add(handle); },
      .finished = [](void*, zwlr_foreign_toplevel_manager_v1*) {},
  };

  // The output is nullptr if we have just removed it.
  static constexpr zwlr_foreign_toplevel_handle_v1_listener handle = {
      .title = [](void*, Handle, const char*) {},
      .app_id = [](void*, Handle, const char*) {},
      .output_enter =
          [](void* data, Handle handle, wl_output* output) {
            if (output) at(data, handle).outputs.insert(WaylandOutput::of(output).registryName());
          },
      .output_leave =
          [](void* data, Handle handle, wl_output* output) {
            if (output) at(data, handle).outputs.erase(WaylandOutput::of(output).registryName());
          },
      .state = [](void* data, Handle handle,
                  wl_array* states) { of(data).noteStates(at(data, handle), *states); },
      .done = [](void* data, Handle) { of(data).hasChanged_ = true; },
      .closed =
          [](void* data, Handle handle) {
            of(data).windows_.erase(handle);
            of(data).hasChanged_ = true;
          },
      .parent = [](void* data, Handle handle, Handle parent) { at(data, handle).parent = parent; },
  };
};

Toplevels::Toplevels(ToplevelManager manager) : manager_(std::move(manager)) {
  zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &Listeners::manager, this);
}

void Toplevels::add(Handle handle) {
  windows_[handle].object.reset(handle);
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Listeners::handle, this);
}

void Toplevels::noteStates(Window& window, const wl_array& states) {
  const std::span all(static_cast<const std::uint32_t*>(states.data),
                      states.size / sizeof(std::uint32_t));
  const auto has = [&all](std::uint32_t state) {
    return std::ranges::find(all, state) != all.end();
  };
  window.isFull = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MAXIMIZED) ||
                  has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_FULLSCREEN);
  window.isMinimized = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
  window.isActive = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
}

bool Toplevels::isCovered(std::uint32_t output) const {
  return std::ranges::any_of(windows_, [this, output](const auto& entry) {
    const Window& window = entry.second;
    const auto parent = windows_.find(window.parent);
    return window.isActive &&
           (window.fills(output) || (parent != windows_.end() && parent->second.fills(output)));
  });
}

bool Toplevels::takeChange() {
  return std::exchange(hasChanged_, false);
}

}  // namespace host::wayland
