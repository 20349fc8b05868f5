#include "platform/linux/views/kept_frames.h"

#include <cstring>
#include <memory>

#include <gtest/gtest.h>

namespace {

using platform::backend::FileIdentity;
using platform::backend::KeptFrames;

constexpr int width = 300;
constexpr int height = 200;
constexpr std::size_t budget = 1 << 20;

struct Destroy {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

// A surface with the color in the rows [first, end), black elsewhere.
Surface surfaceWith(double red, int first, int end) {
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  cairo_t* context = cairo_create(surface.get());
  cairo_set_source_rgb(context, red, 0, 0);
  cairo_rectangle(context, 0, first, width, end - first);
  cairo_fill(context);
  cairo_destroy(context);
  cairo_surface_flush(surface.get());
  return surface;
}

bool areEqual(const Surface& one, const Surface& other) {
  const auto size = static_cast<std::size_t>(cairo_image_surface_get_stride(one.get())) * height;
  return std::memcmp(cairo_image_surface_get_data(one.get()),
                     cairo_image_surface_get_data(other.get()), size) == 0;
}

FileIdentity file(unsigned number) {
  return {.inode = number};
}

TEST(KeptFrames, DrawTheRowsInWhichAFrameDiffers) {
  KeptFrames kept(budget);
  const Surface one = surfaceWith(1, 0, 100);
  const Surface other = surfaceWith(1, 0, 160);
  kept.keep(file(1), one.get());
  kept.keep(file(2), other.get(), KeptFrames::Before{file(1), {100, 160}});
  const auto rows = kept.difference(file(1), file(2));
  EXPECT_LE(rows.first, 100);
  EXPECT_GE(rows.end, 160);
  EXPECT_GT(rows.first, 0);
  const Surface shown = surfaceWith(1, 0, 100);
  kept.draw(file(2), shown.get(), rows);
  EXPECT_TRUE(areEqual(shown, other));
  kept.draw(file(1), shown.get(), {0, height});
  EXPECT_TRUE(areEqual(shown, one));
}

TEST(KeptFrames, ShareEqualStripsAndStayWithinTheBudget) {
  KeptFrames kept(budget);
  const Surface black = surfaceWith(0, 0, 0);
  kept.keep(file(1), black.get());
  const std::size_t size = kept.size();
  kept.keep(file(2), black.get());
  EXPECT_EQ(kept.size(), size);
  const auto same = kept.difference(file(1), file(2));
  EXPECT_EQ(same.first, same.end);

  KeptFrames small(1);
  small.keep(file(1), black.get());
  EXPECT_FALSE(small.has(file(1)));
  // Other files have taken the place of all that was kept.
  for (unsigned number = 2; number < 5000; ++number) small.keep(file(number), black.get());
  EXPECT_LE(small.size(), size);

  kept.clear();
  EXPECT_FALSE(kept.has(file(1)));
  EXPECT_EQ(kept.size(), 0);
}

}  // namespace
