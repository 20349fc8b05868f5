// Wayland objects that destroy themselves. Main thread.
#pragma once

#include <memory>

#include <wayland-client.h>

#include "foreign-toplevel-client-protocol.h"
#include "layer-shell-client-protocol.h"
#include "viewporter-client-protocol.h"
#include "xdg-output-client-protocol.h"

namespace host::wayland {

struct Destroy {
  void operator()(wl_display* object) const { wl_display_disconnect(object); }
  void operator()(wl_registry* object) const { wl_registry_destroy(object); }
  void operator()(wl_compositor* object) const { wl_compositor_destroy(object); }
  void operator()(wl_shm* object) const { wl_shm_destroy(object); }
  void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
  void operator()(wl_surface* object) const { wl_surface_destroy(object); }
  void operator()(wl_callback* object) const { wl_callback_destroy(object); }
  void operator()(wl_output* object) const { wl_output_destroy(object); }
  void operator()(zwlr_layer_shell_v1* object) const { zwlr_layer_shell_v1_destroy(object); }
  void operator()(zwlr_layer_surface_v1* object) const { zwlr_layer_surface_v1_destroy(object); }
  void operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }
  void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
  void operator()(zxdg_output_manager_v1* object) const { zxdg_output_manager_v1_destroy(object); }
  void operator()(zxdg_output_v1* object) const { zxdg_output_v1_destroy(object); }
  void operator()(zwlr_foreign_toplevel_manager_v1* object) const {
    zwlr_foreign_toplevel_manager_v1_destroy(object);
  }
  void operator()(zwlr_foreign_toplevel_handle_v1* object) const {
    zwlr_foreign_toplevel_handle_v1_destroy(object);
  }
  void operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }
  void operator()(wl_region* object) const { wl_region_destroy(object); }
};

using Display = std::unique_ptr<wl_display, Destroy>;
using Registry = std::unique_ptr<wl_registry, Destroy>;
using Compositor = std::unique_ptr<wl_compositor, Destroy>;
using SharedMemory = std::unique_ptr<wl_shm, Destroy>;
using Buffer = std::unique_ptr<wl_buffer, Destroy>;
using Surface = std::unique_ptr<wl_surface, Destroy>;
using FrameCallback = std::unique_ptr<wl_callback, Destroy>;
using OutputObject = std::unique_ptr<wl_output, Destroy>;
using LayerShell = std::unique_ptr<zwlr_layer_shell_v1, Destroy>;
using LayerSurface = std::unique_ptr<zwlr_layer_surface_v1, Destroy>;
using Viewporter = std::unique_ptr<wp_viewporter, Destroy>;
using Viewport = std::unique_ptr<wp_viewport, Destroy>;
using OutputManager = std::unique_ptr<zxdg_output_manager_v1, Destroy>;
using LogicalOutput = std::unique_ptr<zxdg_output_v1, Destroy>;
using ToplevelManager = std::unique_ptr<zwlr_foreign_toplevel_manager_v1, Destroy>;
using ToplevelHandle = std::unique_ptr<zwlr_foreign_toplevel_handle_v1, Destroy>;

// The compositor's interfaces. viewporter and outputs are nullptr if it lacks them.
struct Globals {
  Compositor compositor;
  SharedMemory memory;
  LayerShell layerShell;
  Viewporter viewporter;
  OutputManager outputs;
};

}  // namespace host::wayland
