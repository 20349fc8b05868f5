#include "host/wallpaper/glimpse.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "host/wallpaper/blurred_copy.h"

namespace host {
namespace {

constexpr int details = 20;

// As the eye weighs the colors.
double brightnessOf(std::uint32_t pixel) {
  const auto channel = [pixel](int shift) { return (pixel >> shift & 0xff) / 255.0; };
  return 0.299 * channel(16) + 0.587 * channel(8) + 0.114 * channel(0);
}

struct Span {
  int first;
  int end;
};

Span pixelsOf(double start, double length, double scale, int count) {
  return {std::clamp(static_cast<int>(std::floor(start * scale)), 0, count),
          std::clamp(static_cast<int>(std::ceil((start + length) * scale)), 0, count)};
}

}  // namespace

Glimpse::Glimpse(cairo_surface_t* shown, artwork::Size size)
    : copy_(blurredCopy(shown, details)),
      scaleX_(cairo_image_surface_get_width(copy_.get()) / size.width),
      scaleY_(cairo_image_surface_get_height(copy_.get()) / size.height) {
  cairo_surface_flush(copy_.get());
}

double Glimpse::brightness(const artwork::Rect& area) const {
  const Span columns =
      pixelsOf(area.x, area.width, scaleX_, cairo_image_surface_get_width(copy_.get()));
  const Span rows =
      pixelsOf(area.y, area.height, scaleY_, cairo_image_surface_get_height(copy_.get()));
  const int count = (columns.end - columns.first) * (rows.end - rows.first);
  double sum = 0;
  for (int y = rows.first; y < rows.end; ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(
        cairo_image_surface_get_data(copy_.get()) +
        static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(copy_.get()));
    for (int x = columns.first; x < columns.end; ++x) sum += brightnessOf(row[x]);
  }
  return count > 0 ? sum / count : 0;
}

void Glimpse::paint(cairo_t* context) const {
  cairo_save(context);
  cairo_scale(context, 1 / scaleX_, 1 / scaleY_);
  cairo_set_source_surface(context, copy_.get(), 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_BILINEAR);
  cairo_paint(context);
  cairo_restore(context);
}

}  // namespace host
