#include "host/home_screen/cached_view.h"

#include <cmath>

#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

// Pixels per point.
double scaleOf(cairo_t* context) {
  double x = 1;
  double y = 0;
  cairo_user_to_device_distance(context, &x, &y);
  return x;
}

}  // namespace

void CachedView::draw(cairo_t* context, platform::CGSize size) {
  const double scale = scaleOf(context);
  if (!painting_ || !(size == paintedSize_) || scale != paintedScale_) {
    painting_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                               static_cast<int>(std::ceil(size.width * scale)),
                                               static_cast<int>(std::ceil(size.height * scale))));
    cairo_surface_set_device_scale(painting_.get(), scale, scale);
    cairo_t* painter = cairo_create(painting_.get());
    paint(painter, {size.width, size.height});
    cairo_destroy(painter);
    paintedSize_ = size;
    paintedScale_ = scale;
  }
  cairo_set_source_surface(context, painting_.get(), 0, 0);
  cairo_paint(context);
}

void CachedView::forgetPainting() {
  painting_.reset();
  platform::backend::RunLoop::main().setNeedsDisplay();
}

}  // namespace host
