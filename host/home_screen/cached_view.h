// A view that keeps its painting, so that an animation behind it does not repaint it. Main thread.
#pragma once

#include "host/artwork/geometry.h"
#include "host/home_screen/drawn_surface.h"
#include "platform/linux/views/drawn_view.h"

namespace host {

class CachedView : public platform::backend::DrawnView {
 public:
  void draw(cairo_t* context, platform::CGSize size) final;

 protected:
  // Paints the whole view, which may be translucent. size is in points.
  virtual void paint(cairo_t* context, artwork::Size size) = 0;
  // Call it when paint would give a different result. A change of size needs no call.
  void forgetPainting();

 private:
  DrawnSurface painting_;
  platform::CGSize paintedSize_;
  double paintedScale_ = 0;
};

}  // namespace host
