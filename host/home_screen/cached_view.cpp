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

// Returns all pixels that are partly in the rectangle, but for rounding errors.
cairo_rectangle_int_t wholePixels(double left, double top, double right, double bottom) {
  constexpr double error = 1e-6;
  const auto first = [](double edge) { return static_cast<int>(std::floor(edge + error)); };
  const auto end = [](double edge) { return static_cast<int>(std::ceil(edge - error)); };
  return {first(left), first(top), end(right) - first(left), end(bottom) - first(top)};
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
  const auto& [size, scale, x, y] = place_;
  DrawnSurface painting(cairo_image_surface_create(
      CAIRO_FORMAT_ARGB32, static_cast<int>(std::ceil(size.width * scale + x)),
      static_cast<int>(std::ceil(size.height * scale + y))));
  const DrawingContext painter(cairo_create(painting.get()));
  cairo_translate(painter.get(), x, y);
  cairo_scale(painter.get(), scale, scale);
  paint(painter.get(), {size.width, size.height});
  cairo_surface_flush(painting.get());
  return painting;
}

void CachedView::draw(cairo_t* context, platform::CGSize size) {
  double x = 0;
  double y = 0;
  cairo_user_to_device(context, &x, &y);
  const double left = std::floor(x);
  const double top = std::floor(y);
  const Place place{size, scaleOf(context), x - left, y - top};
  if (!painting_ || !(place == place_)) {
    place_ = place;
    painting_ = painted();
  }
  // Pixel by pixel, also where the view begins within one.
  cairo_identity_matrix(context);
  cairo_set_source_surface(context, painting_.get(), left, top);
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
  const cairo_rectangle_int_t changed = differingPart(before.get(), painting_.get());
  if (changed.width > 0) include(changed);
  RunLoop::main().setNeedsPartialDisplay();
}

void CachedView::include(const cairo_rectangle_int_t& pixels) {
  const platform::CGRect part{(pixels.x - place_.x) / place_.scale,
                              (pixels.y - place_.y) / place_.scale, pixels.width / place_.scale,
                              pixels.height / place_.scale};
  if (!(redrawn_.width > 0)) {
    redrawn_ = part;
    return;
  }
  const double right = std::max(redrawn_.x + redrawn_.width, part.x + part.width);
  const double bottom = std::max(redrawn_.y + redrawn_.height, part.y + part.height);
  redrawn_.x = std::min(redrawn_.x, part.x);
  redrawn_.y = std::min(redrawn_.y, part.y);
  redrawn_.width = right - redrawn_.x;
  redrawn_.height = bottom - redrawn_.y;
}

Region CachedView::takeRedrawnPart(double scale) {
  const platform::CGRect part = std::exchange(redrawn_, platform::CGRect());
  if (!(part.width > 0)) return {};
  const double left = (frame().x + part.x) * scale;
  const double top = (frame().y + part.y) * scale;
  return Region(wholePixels(left, top, left + part.width * scale, top + part.height * scale));
}

}  // namespace host
