#include "host/displays/wayland/wayland_desktop.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <utility>

#include <poll.h>

#include "host/desktop/desktop_area.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host::wayland {
namespace {

using platform::backend::RunLoop;

template <typename Pointer>
void bindGlobal(wl_registry* registry, std::uint32_t name, const wl_interface& interface,
                std::uint32_t version, Pointer& object) {
  object.reset(static_cast<typename Pointer::pointer>(
      wl_registry_bind(registry, name, &interface, version)));
}

}  // namespace

struct WaylandDesktop::Listeners {
  static WaylandDesktop& of(void* data) { return *static_cast<WaylandDesktop*>(data); }

  static constexpr wl_registry_listener registry = {
      .global = [](void* data, wl_registry*, std::uint32_t name, const char* interface,
                   std::uint32_t version) { of(data).addGlobal(name, interface, version); },
      .global_remove = [](void* data, wl_registry*,
                          std::uint32_t name) { of(data).removeGlobal(name); },
  };
};

WaylandDesktop::WaylandDesktop(const DesktopOptions& options, std::function<void()> changed,
                               std::function<void()> ended)
    : options_(options),
      changed_([this, changed = std::move(changed)] {
        hasChanged_ = true;
        changed();
      }),
      ended_(std::move(ended)),
      display_(wl_display_connect(nullptr)),
      sway_([this] { updateCovers(); }) {
  if (!display_)
    throw std::runtime_error(std::string("cannot connect to the Wayland compositor ") +
                             std::getenv("WAYLAND_DISPLAY"));
  registry_.reset(wl_display_get_registry(display_.get()));
  wl_registry_add_listener(registry_.get(), &Listeners::registry, this);
  wl_display_roundtrip(display_.get());
  if (!globals_.compositor || !globals_.memory || !globals_.layerShell) {
    throw std::runtime_error(
        "this Wayland compositor cannot show a wallpaper of another program: it lacks "
        "zwlr_layer_shell_v1, which sway, Hyprland, KDE Plasma and others have; use --display "
        "window");
  }
  hasGlobals_ = true;
  for (const auto& output : outputs_) output->askForPlace();
  // The first answers tell the names, the second the surfaces' configurations.
  wl_display_roundtrip(display_.get());
  startOutputs();
  wl_display_roundtrip(display_.get());
  RunLoop::main().addSource(wl_display_get_fd(display_.get()), [this] { return handleEvents(); });
}

WaylandDesktop::~WaylandDesktop() {
  RunLoop::main().removeSource(wl_display_get_fd(display_.get()));
  RunLoop::main().clearAlarm(this);
}

void WaylandDesktop::addGlobal(std::uint32_t registryName, const std::string& interface,
                               std::uint32_t version) {
  wl_registry* const registry = registry_.get();
  if (interface == wl_compositor_interface.name) {
    constexpr std::uint32_t damageInPixels = 4;
    bindGlobal(registry, registryName, wl_compositor_interface, damageInPixels,
               globals_.compositor);
  } else if (interface == wl_shm_interface.name) {
    bindGlobal(registry, registryName, wl_shm_interface, 1, globals_.memory);
  } else if (interface == zwlr_layer_shell_v1_interface.name) {
    bindGlobal(registry, registryName, zwlr_layer_shell_v1_interface, 1, globals_.layerShell);
  } else if (interface == wp_viewporter_interface.name) {
    bindGlobal(registry, registryName, wp_viewporter_interface, 1, globals_.viewporter);
  } else if (interface == zxdg_output_manager_v1_interface.name) {
    constexpr std::uint32_t names = 2;
    bindGlobal(registry, registryName, zxdg_output_manager_v1_interface, std::min(version, names),
               globals_.outputs);
  } else if (interface == zwlr_foreign_toplevel_manager_v1_interface.name) {
    constexpr std::uint32_t parents = 3;
    ToplevelManager manager;
    if (sway_.isConnected()) return;
    bindGlobal(registry, registryName, zwlr_foreign_toplevel_manager_v1_interface,
               std::min(version, parents), manager);
    toplevels_.emplace(std::move(manager));
  } else if (interface == wl_output_interface.name) {
    constexpr std::uint32_t names = 4;
    OutputObject object;
    bindGlobal(registry, registryName, wl_output_interface, std::min(version, names), object);
    outputs_.push_back(std::make_unique<WaylandOutput>(globals_, std::move(object), registryName,
                                                       options_, [this] { noteChange(); }));
    if (hasGlobals_) outputs_.back()->askForPlace();
  }
}

void WaylandDesktop::startOutputs() {
  for (const auto& output : outputs_) {
    if (!options_.isChosen(output->describe().name)) {
      output->stop();
      continue;
    }
    output->start();
    if (sway_.isConnected()) output->measureUsableArea([this] { sway_.refresh(); });
  }
}

// Panels count as covered, because the windows' lists do not contain them. Behind a translucent one
// only a strip of the wallpaper stands still.
bool WaylandDesktop::isCovered(const WaylandOutput& output) const {
  if (toplevels_) return toplevels_->isCovered(output.registryName());
  const OutputUse use = sway_.useOf(output.describe().name);
  const auto& usable = output.usableArea();
  // Otherwise there are gaps between the panels and the workspace.
  const bool isWorkspaceAll =
      usable && use.workspaceWidth == usable->width() && use.workspaceHeight == usable->height();
  return use.isFull || (use.isWorkspaceFull && isWorkspaceAll);
}

void WaylandDesktop::updateCovers() {
  bool isNews = false;
  for (const auto& output : outputs_) isNews = output->setCovered(isCovered(*output)) || isNews;
  if (isNews) changed_();
}

void WaylandDesktop::noteChange() {
  if (!hasGlobals_) return;
  startOutputs();
  sway_.refresh();
  changed_();
  RunLoop::main().setNeedsPartialDisplay();
}

void WaylandDesktop::removeGlobal(std::uint32_t registryName) {
  const auto removed = std::erase_if(outputs_, [registryName](const auto& output) {
    return output->registryName() == registryName;
  });
  if (removed > 0) noteChange();
}

std::vector<Output> WaylandDesktop::outputs() const {
  std::vector<Output> outputs;
  for (const auto& output : outputs_) outputs.push_back(output->describe());
  return outputs;
}

void WaylandDesktop::show(const WallpaperPicture& picture) {
  std::vector<Output> shown = outputs();
  std::erase_if(shown, [this](const Output& output) { return !options_.isChosen(output.name); });
  for (const auto& output : outputs_) {
    output->show(picture, areaOf(output->describe(), shown, options_));
  }
  setAlarm();
  wl_display_flush(display_.get());
}

bool WaylandDesktop::isFading() const {
  return std::ranges::any_of(outputs_, [](const auto& output) { return output->isFading(); });
}

// Wakes the process when an output has not shown its last frame in time.
void WaylandDesktop::setAlarm() {
  std::optional<RunLoop::Clock::time_point> next;
  for (const auto& output : outputs_) {
    const auto deadline = output->deadline();
    if (deadline) next = next ? std::min(*next, *deadline) : *deadline;
  }
  if (!next) return RunLoop::main().clearAlarm(this);
  RunLoop::main().setAlarm(this, *next, [this] {
    const auto now = RunLoop::Clock::now();
    for (const auto& output : outputs_) {
      const auto deadline = output->deadline();
      if (deadline && *deadline <= now) output->noteDeadline();
    }
    setAlarm();
  });
}

// Returns true if outputs or windows have changed; the messages that follow each frame do not
// count.
bool WaylandDesktop::handleEvents() {
  bool hasHandled = false;
  hasChanged_ = false;
  while (wl_display_prepare_read(display_.get()) != 0) {
    wl_display_dispatch_pending(display_.get());
    hasHandled = true;
  }
  wl_display_flush(display_.get());
  pollfd descriptor{wl_display_get_fd(display_.get()), POLLIN, 0};
  if (poll(&descriptor, 1, 0) > 0) {
    wl_display_read_events(display_.get());
  } else {
    wl_display_cancel_read(display_.get());
  }
  hasHandled = wl_display_dispatch_pending(display_.get()) > 0 || hasHandled;
  if (wl_display_get_error(display_.get()) != 0) {
    ended_();
    return false;
  }
  if (toplevels_ && toplevels_->takeChange()) updateCovers();
  if (hasHandled) setAlarm();
  return hasChanged_;
}

}  // namespace host::wayland
