// A view whose painting is kept, so that an animation behind it does not paint it anew every time.
// Main thread.
#pragma once

#include <memory>

#include "host/artwork/geometry.h"
#include "platform/linux/views/drawn_view.h"

namespace host {

class CachedView : public platform::backend::DrawnView {
 public:
  void draw(cairo_t* context, platform::CGSize size) final;

 protected:
  // Paints the whole content, which may be translucent.
  virtual void paint(cairo_t* context, artwork::Size size) = 0;
  // To be called when paint would paint something else; a change of size is noticed by itself.
  void forgetPainting();

 private:
  struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };

  std::unique_ptr<cairo_surface_t, DestroySurface> painting_;
  platform::CGSize paintedSize_;
  double paintedScale_ = 0;
};

}  // namespace host
