#include "host/home_screen/cached_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::Region;
using platform::backend::RunLoop;

constexpr int pixelSize = 4;

// Returns a rectangle that contains all pixels in which two ARGB32 surfaces of one size differ.
cairo_rectangle_int_t differingPart(cairo_surface_t* one, cairo_surface_t* other) {
  const int width = cairo_image_surface_get_width(one);
  const int height = cairo_image_surface_get_height(one);
  const auto stride = static_cast<std::ptrdiff_t>(cairo_image_surface_get_stride(one));
  int left = width;
  int right = 0;
  int top = height;
  int bottom = 0;
  for (int y = 0; y < height; ++y) {
    const unsigned char* pixels = cairo_image_surface_get_data(one) + y * stride;
    const unsigned char* others = cairo_image_surface_get_data(other) + y * stride;
    const unsigned char* end = pixels + static_cast<std::ptrdiff_t>(width) * pixelSize;
    const unsigned char* first = std::mismatch(pixels, end, others).first;
    if (first == end) continue;
    const unsigned char* last = end;
    while (*(last - 1) == others[last - 1 - pixels]) --last;
    left = std::min(left, static_cast<int>(first - pixels) / pixelSize);
    right = std::max(right, static_cast<int>(last - 1 - pixels) / pixelSize + 1);
    top = std::min(top, y);
    bottom = y + 1;
  }
  return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

// Pixels per point.
double scaleOf(cairo_t* context) {
  double x = 1;
  double y = 0;
  cairo_user_to_device_distance(context, &x, &y);
  return x;
}

}  // namespace

DrawnSurface CachedView::painted() {
  DrawnSurface painting(cairo_image_surface_create(
      CAIRO_FORMAT_ARGB32, static_cast<int>(std::ceil(paintedSize_.width * paintedScale_)),
      static_cast<int>(std::ceil(paintedSize_.height * paintedScale_))));
  cairo_surface_set_device_scale(painting.get(), paintedScale_, paintedScale_);
  const DrawingContext painter(cairo_create(painting.get()));
  paint(painter.get(), {paintedSize_.width, paintedSize_.height});
  cairo_surface_flush(painting.get());
  return painting;
}

void CachedView::draw(cairo_t* context, platform::CGSize size) {
  const double scale = scaleOf(context);
  if (!painting_ || !(size == paintedSize_) || scale != paintedScale_) {
    paintedSize_ = size;
    paintedScale_ = scale;
    painting_ = painted();
  }
  cairo_set_source_surface(context, painting_.get(), 0, 0);
  cairo_paint(context);
}

void CachedView::forgetPainting() {
  painting_.reset();
  RunLoop::main().setNeedsDisplay();
}

void CachedView::repaint() {
  // A view that is not shown yet will be drawn when it is.
  if (hidden() || !painting_) return painting_.reset();
  const DrawnSurface before = std::exchange(painting_, painted());
  Region changed(differingPart(before.get(), painting_.get()));
  changed.move(static_cast<int>(std::lround(frame().x * paintedScale_)),
               static_cast<int>(std::lround(frame().y * paintedScale_)));
  redrawn_.add(changed);
  RunLoop::main().setNeedsPartialDisplay();
}

Region CachedView::takeRedrawnPart() {
  return std::exchange(redrawn_, Region());
}

}  // namespace host
