// Draws pictures scaled. Main thread.
#pragma once

#include <memory>
#include <vector>

#include <cairo.h>

#include "platform/geometry.h"
#include "platform/linux/images/scaling/scaler.h"
#include "platform/linux/views/picture_surface.h"

namespace platform::backend {

// Keeps what is equal for all frames of an animation.
class PictureDrawing {
 public:
  struct Look {
    double alpha = 1;
    // True if an enlarged pixel is a rectangle.
    bool isPixelArt = false;
  };

  // Draws the picture, which exists, so that it fills the rectangle in the context's coordinates.
  void draw(cairo_t* context, const PictureSurface& picture, const CGRect& at, const Look& look);
  void draw(cairo_t* context, const PictureSurface& picture, const CGRect& at) {
    draw(context, picture, at, {});
  }

 private:
  void scale(cairo_surface_t* picture, const CGRect& place, const cairo_rectangle_int_t& part,
             cairo_surface_t* target, int x, int y);
  void blend(cairo_t* context, const PictureSurface& picture, const CGRect& place,
             const cairo_rectangle_int_t& part, double alpha);

  scaling::Scaler scaler_;
};

}  // namespace platform::backend
