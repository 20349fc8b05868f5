#include "host/displays/wayland/background_surface.h"

#include <cstdint>

#include "host/displays/wayland/sway_background.h"

namespace host::wayland {

LayerSurface makeBackgroundSurface(const Globals& globals, wl_surface* surface, wl_output* output,
                                   int zone) {
  constexpr std::uint32_t allEdges =
      ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
      ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
  const auto layer =
      hasSwayBackground() ? ZWLR_LAYER_SHELL_V1_LAYER_BOTTOM : ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND;
  LayerSurface made(zwlr_layer_shell_v1_get_layer_surface(globals.layerShell.get(), surface, output,
                                                          layer, "wallpaper"));
  zwlr_layer_surface_v1_set_anchor(made.get(), allEdges);
  zwlr_layer_surface_v1_set_exclusive_zone(made.get(), zone);
  return made;
}

}  // namespace host::wayland
