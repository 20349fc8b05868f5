#include "platform/linux/views/kept_frames.h"

#include <cstring>
#include <optional>

#include <gtest/gtest.h>

#include "platform/linux/views/cairo_objects.h"
#include "platform/linux/views/frame_replay.h"

namespace {

using platform::backend::FileIdentity;
using platform::backend::FrameReplay;
using platform::backend::KeptFrames;
using platform::backend::Region;

constexpr int width = 300;
constexpr int height = 200;
constexpr std::size_t budget = 1 << 20;

using Surface = platform::backend::CairoSurface;
const Region all({0, 0, width, height});

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

TEST(KeptFrames, DrawThePixelsInWhichAFrameDiffers) {
  KeptFrames kept(budget);
  const Surface one = surfaceWith(1, 0, 100);
  const Surface other = surfaceWith(1, 0, 160);
  kept.keep(file(1), one.get());
  kept.keep(file(2), other.get(), KeptFrames::Before{file(1), Region({0, 100, width, 60})});
  const Region different = kept.difference(file(1), file(2));
  const auto bounds = different.bounds();
  EXPECT_LE(bounds.y, 100);
  EXPECT_GE(bounds.y + bounds.height, 160);
  EXPECT_GT(bounds.y, 0);
  const Surface shown = surfaceWith(1, 0, 100);
  kept.draw(file(2), shown.get(), different);
  EXPECT_TRUE(areEqual(shown, other));
  kept.draw(file(1), shown.get(), all);
  EXPECT_TRUE(areEqual(shown, one));
}

TEST(KeptFrames, ShareEqualTiles) {
  KeptFrames kept(budget);
  const Surface black = surfaceWith(0, 0, 0);
  kept.keep(file(1), black.get());
  const std::size_t size = kept.size();
  kept.keep(file(2), black.get());
  // Only the list of tiles is new.
  EXPECT_LT(kept.size(), size + size / 2);
  EXPECT_TRUE(kept.difference(file(1), file(2)).isEmpty());

  // Another size takes the place of all.
  const Surface larger(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width + 1, height));
  kept.keep(file(1), larger.get());
  EXPECT_FALSE(kept.has(file(2)));
  EXPECT_TRUE(kept.fits(larger.get()));

  kept.clear();
  EXPECT_FALSE(kept.has(file(1)));
  EXPECT_EQ(kept.size(), 0);
}

TEST(KeptFrames, StayUntilTheyAreNotShownAnyMore) {
  // One frame fits.
  const Surface frame = surfaceWith(1, 0, 100);
  KeptFrames kept(budget);
  kept.keep(file(1), frame.get());
  KeptFrames small(kept.size());
  for (unsigned round = 0; round < 3; ++round) {
    small.keep(file(1), frame.get());
    ASSERT_TRUE(small.has(file(1)));
    small.draw(file(1), frame.get(), all);
    for (unsigned number = 2; number < 4; ++number) {
      const Surface other = surfaceWith(1.0 / number, 0, 150);
      small.keep(file(number), other.get());
      EXPECT_FALSE(small.has(file(number)));
    }
  }
  // Other files take the place of all that were kept.
  for (const unsigned number : {11, 12, 13, 12, 13, 12, 13}) small.keep(file(number), frame.get());
  EXPECT_TRUE(small.has(file(12)));
  EXPECT_FALSE(small.has(file(1)));
}

TEST(FrameReplay, DecodesOnlyFramesThatAreNotKept) {
  const Region changed({0, 7, 5, 3});
  const Surface surface = surfaceWith(1, 0, 100);
  FrameReplay replay(budget);
  int decoded = 0;
  int drawn = 0;
  Region drawnPart;
  const auto show = [&](std::optional<FileIdentity> frame) {
    const Region part = replay.next(frame, [&] {
      ++decoded;
      return Region(changed);
    });
    replay.draw(surface.get(), part, [&](const Region& unkept) {
      ++drawn;
      drawnPart = unkept;
    });
    return part.bounds();
  };
  replay.restart(std::nullopt);
  for (const unsigned number : {1, 2, 1, 2}) show(file(number));
  EXPECT_EQ(decoded, 2);
  EXPECT_EQ(drawn, 2);
  // What is decoded next differs from the frame that was decoded last, which is not on the surface.
  EXPECT_EQ(show(std::nullopt).height, height);
  EXPECT_EQ(show(std::nullopt).height, changed.bounds().height);
  replay.restart(std::nullopt);
  show(file(1));
  EXPECT_EQ(drawn, 5);

  // Pixels that were forgotten are drawn once more, and no others.
  show(file(2));
  replay.forget(Region({0, 0, 20, 10}));
  for (const unsigned number : {1, 2}) {
    const auto shown = show(file(number));
    EXPECT_TRUE(shown.x == 0 && shown.y == 0 && shown.width >= 20 && shown.height >= 10);
    EXPECT_EQ(drawnPart.bounds().y, 0);
    EXPECT_LT(drawnPart.bounds().height, height);
    EXPECT_EQ(decoded, 6);
    EXPECT_EQ(drawn, 6 + static_cast<int>(number));
  }
  show(file(1));
  EXPECT_EQ(drawn, 8);
}

}  // namespace
