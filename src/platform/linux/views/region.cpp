#include "platform/linux/views/region.h"

namespace platform::backend {

Region::Region() : region_(cairo_region_create()) {}

Region::Region(const cairo_rectangle_int_t& rectangle)
    : region_(cairo_region_create_rectangle(&rectangle)) {}

Region::Region(const Region& other) : region_(cairo_region_copy(other.region_.get())) {}

Region& Region::operator=(const Region& other) {
  if (this != &other) region_.reset(cairo_region_copy(other.region_.get()));
  return *this;
}

bool Region::isEmpty() const {
  return cairo_region_is_empty(region_.get()) != 0;
}

std::vector<cairo_rectangle_int_t> Region::rectangles() const {
  std::vector<cairo_rectangle_int_t> rectangles;
  const int count = cairo_region_num_rectangles(region_.get());
  for (int index = 0; index < count; ++index) {
    cairo_region_get_rectangle(region_.get(), index, &rectangles.emplace_back());
  }
  return rectangles;
}

cairo_rectangle_int_t Region::bounds() const {
  cairo_rectangle_int_t bounds;
  cairo_region_get_extents(region_.get(), &bounds);
  return bounds;
}

bool Region::overlaps(const cairo_rectangle_int_t& rectangle) const {
  return cairo_region_contains_rectangle(region_.get(), &rectangle) != CAIRO_REGION_OVERLAP_OUT;
}

void Region::add(const cairo_rectangle_int_t& rectangle) {
  cairo_region_union_rectangle(region_.get(), &rectangle);
}

void Region::add(const Region& other) {
  cairo_region_union(region_.get(), other.region_.get());
}

void Region::intersect(const cairo_rectangle_int_t& rectangle) {
  cairo_region_intersect_rectangle(region_.get(), &rectangle);
}

void Region::move(int right, int down) {
  cairo_region_translate(region_.get(), right, down);
}

void clipTo(cairo_t* context, const Region& region) {
  for (const auto& part : region.rectangles()) {
    cairo_rectangle(context, part.x, part.y, part.width, part.height);
  }
  cairo_clip(context);
}

}  // namespace platform::backend
