// Makes surfaces that lie behind all windows. Main thread.
#pragma once

#include "host/displays/wayland/wayland_objects.h"

namespace host::wayland {

// Makes the surface one of the background layer, or of the layer above where sway has a background
// of its own, attached to all edges of the output. zone: 0 for the part that panels leave, -1 for
// the whole output. The caller commits the surface.
LayerSurface makeBackgroundSurface(const Globals& globals, wl_surface* surface, wl_output* output,
                                   int zone);

}  // namespace host::wayland
