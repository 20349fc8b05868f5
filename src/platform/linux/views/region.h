// A set of whole pixels, made of rectangles.
#pragma once

#include <memory>
#include <vector>

#include <cairo.h>

namespace platform::backend {

// One thread at a time. If memory runs out, it may lack what was to be added.
class Region {
 public:
  Region();
  explicit Region(const cairo_rectangle_int_t& rectangle);
  Region(const Region& other);
  Region(Region&& other) noexcept = default;
  Region& operator=(const Region& other);
  Region& operator=(Region&& other) noexcept = default;
  ~Region() = default;

  bool isEmpty() const;
  // Returns the rectangles, none of which overlap.
  std::vector<cairo_rectangle_int_t> rectangles() const;
  // Returns the smallest rectangle that contains it.
  cairo_rectangle_int_t bounds() const;
  bool overlaps(const cairo_rectangle_int_t& rectangle) const;

  void add(const cairo_rectangle_int_t& rectangle);
  void add(const Region& other);
  // Keeps only what is in the rectangle.
  void intersect(const cairo_rectangle_int_t& rectangle);
  void move(int right, int down);

 private:
  struct Destroy {
    void operator()(cairo_region_t* region) const { cairo_region_destroy(region); }
  };
  std::unique_ptr<cairo_region_t, Destroy> region_;
};

// Restricts drawing to the region. The context's coordinates are pixels.
void clipTo(cairo_t* context, const Region& region);

}  // namespace platform::backend
