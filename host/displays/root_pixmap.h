// A copy of the wallpaper on the X server for programs that show it behind their own contents, such
// as translucent terminals: the pixmap of the root window's property "_XROOTPMAP_ID". Main thread.
#pragma once

#include <chrono>
#include <functional>

#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/views/region.h"

struct _XDisplay;

namespace host {

class RootPixmap {
 public:
  // display must outlive this object.
  explicit RootPixmap(_XDisplay* display) : display_(display) {}
  // Deletes the pixmap and the property, unless another program has set it since.
  ~RootPixmap();
  RootPixmap(const RootPixmap&) = delete;
  RootPixmap& operator=(const RootPixmap&) = delete;

  // Takes the size of the screen in pixels.
  void resize(int width, int height);
  // Notes that a part of the screen differs from the pixmap.
  void noteChange(const platform::backend::Region& part);
  // Paints the changed part with this function, at most once a second.
  using Paint = std::function<void(cairo_surface_t* target, const platform::backend::Region& part)>;
  void publish(const Paint& paint);

 private:
  void release();
  void announce();

  _XDisplay* const display_;
  // 0 if there is none.
  unsigned long pixmap_ = 0;
  DrawnSurface surface_;
  int width_ = 0;
  int height_ = 0;
  platform::backend::Region changed_;
  std::chrono::steady_clock::time_point publishedAt_;
};

}  // namespace host
