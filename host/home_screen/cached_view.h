// A view that keeps its painting, so that an animation behind it does not repaint it. Main thread.
#pragma once

#include "host/artwork/geometry.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/views/drawn_view.h"
#include "platform/linux/views/region.h"

namespace host {

class CachedView : public platform::backend::DrawnView {
 public:
  void draw(cairo_t* context, platform::CGSize size) final;
  // Returns the pixels of the superview, whose origin must be that of the screen, in which repaint
  // has changed the view since the last call. scale: pixels per point.
  platform::backend::Region takeRedrawnPart(double scale);

 protected:
  // Paints the whole view, which may be translucent. size is in points.
  virtual void paint(cairo_t* context, artwork::Size size) = 0;
  // Call one of them when paint gives a different result. A change of size needs no call.
  void forgetPainting();
  // Shows only what has changed.
  void repaint();

 private:
  DrawnSurface painted();
  // Adds these pixels of the painting to those that have been redrawn.
  void include(const cairo_rectangle_int_t& pixels);

  // The size of the view in points, the pixels per point, and where it begins within a pixel.
  struct Place {
    platform::CGSize size;
    double scale = 0;
    double x = 0;
    double y = 0;
    friend bool operator==(const Place&, const Place&) = default;
  };

  DrawnSurface painting_;
  Place place_;
  // In points, relative to the view; empty if nothing has changed.
  platform::CGRect redrawn_;
};

}  // namespace host
