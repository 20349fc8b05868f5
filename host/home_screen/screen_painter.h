// Paints the screen on a surface that keeps its pixels: only what has changed, and frames that were
// painted before without drawing them again. Main thread.
#pragma once

#include <cstddef>
#include <memory>

#include <cairo.h>

#include "host/home_screen/screen.h"
#include "platform/image_view.h"
#include "platform/linux/views/frame_replay.h"
#include "platform/linux/views/region.h"

namespace host {

class ScreenPainter {
 public:
  // scale: pixels per point. maxKeptBytes: the memory for painted frames. screen must outlive this
  // object.
  ScreenPainter(Screen& screen, double scale, std::size_t maxKeptBytes);

  // Call takeChangedPart(true) after it.
  void setScale(double scale) { scale_ = scale; }

  // Returns the pixels that must be painted because the screen has changed. isAll: true if more may
  // have changed than the images of views, or the surface is another one.
  platform::backend::Region takeChangedPart(bool isAll);
  // Returns all pixels of the screen.
  platform::backend::Region all() const;

  // Paints this part, at least, on an image surface that has the screen's size and outside of the
  // part what was painted last.
  void paint(cairo_surface_t* surface, const platform::backend::Region& part);

 private:
  Screen& screen_;
  double scale_;
  platform::backend::FrameReplay replay_;
  // The view of the animation. While it is the only one that changes, its frames are kept.
  std::weak_ptr<platform::UIImageView> animated_;
};

}  // namespace host
