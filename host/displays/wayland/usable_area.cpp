#include "host/displays/wayland/usable_area.h"

#include <utility>

#include "host/displays/wayland/background_surface.h"

namespace host::wayland {

struct UsableArea::Listeners {
  static constexpr zwlr_layer_surface_v1_listener layerSurface = {
      .configure =
          [](void* data, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
             std::uint32_t height) {
            static_cast<UsableArea*>(data)->configure(serial, static_cast<int>(width),
                                                      static_cast<int>(height));
          },
      // The compositor removes the output next.
      .closed = [](void*, zwlr_layer_surface_v1*) {},
  };
};

UsableArea::UsableArea(const Globals& globals, wl_output* output, std::function<void()> changed)
    : changed_(std::move(changed)),
      surface_(wl_compositor_create_surface(globals.compositor.get())),
      layerSurface_(makeBackgroundSurface(globals, surface_.get(), output, 0)) {
  zwlr_layer_surface_v1_add_listener(layerSurface_.get(), &Listeners::layerSurface, this);
  wl_surface_commit(surface_.get());
}

void UsableArea::configure(std::uint32_t serial, int width, int height) {
  zwlr_layer_surface_v1_ack_configure(layerSurface_.get(), serial);
  if (width == width_ && height == height_) return;
  width_ = width;
  height_ = height;
  changed_();
}

}  // namespace host::wayland
