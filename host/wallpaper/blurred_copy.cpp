#include "host/wallpaper/blurred_copy.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr int timesDoubled = 4;

// Returns an opaque surface of this size that shows all of the source.
DrawnSurface resized(cairo_surface_t* source, int width, int height) {
  DrawnSurface result(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  const DrawingContext context(cairo_create(result.get()));
  cairo_scale(context.get(), static_cast<double>(width) / cairo_image_surface_get_width(source),
              static_cast<double>(height) / cairo_image_surface_get_height(source));
  cairo_set_source_surface(context.get(), source, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context.get()), CAIRO_EXTEND_PAD);
  cairo_paint(context.get());
  return result;
}

}  // namespace

// Shrinking averages; the steps of two on the way back smooth the result.
DrawnSurface blurredCopy(cairo_surface_t* source, int details) {
  const int sourceWidth = cairo_image_surface_get_width(source);
  const int sourceHeight = cairo_image_surface_get_height(source);
  const double share = static_cast<double>(details) / std::max(sourceWidth, sourceHeight);
  int width = std::max(static_cast<int>(std::lround(sourceWidth * share)), 2);
  int height = std::max(static_cast<int>(std::lround(sourceHeight * share)), 2);
  DrawnSurface copy = resized(source, width, height);
  for (int times = 0; times < timesDoubled; ++times) {
    width *= 2;
    height *= 2;
    copy = resized(copy.get(), width, height);
  }
  return copy;
}

}  // namespace host
