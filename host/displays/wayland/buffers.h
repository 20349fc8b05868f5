// The buffers of a surface, in memory shared with the compositor. Main thread.
#pragma once

#include <array>

#include "host/displays/wayland/wayland_objects.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/views/region.h"

namespace host::wayland {

// Two buffers of one size: one is painted while the compositor shows the other.
class Buffers {
 public:
  struct OneBuffer {
    Buffer object;
    DrawnSurface surface;
    // True while the compositor may read it.
    bool isBusy = false;
    // The part that is older than the surface's contents.
    platform::backend::Region stale;
  };

  // Size in pixels. Throws std::runtime_error, with the reason, if there is no memory.
  Buffers(wl_shm* memory, int width, int height);
  ~Buffers();
  Buffers(const Buffers&) = delete;
  Buffers& operator=(const Buffers&) = delete;

  int width() const { return width_; }
  int height() const { return height_; }

  // Notes a part of the surface's contents that must be painted in every buffer.
  void addStale(const platform::backend::Region& part);
  // Returns a buffer that the compositor does not use, or nullptr if there is none at the moment.
  OneBuffer* free();

 private:
  const int width_;
  const int height_;
  void* bytes_ = nullptr;
  std::size_t size_ = 0;
  std::array<OneBuffer, 2> buffers_;
};

}  // namespace host::wayland
