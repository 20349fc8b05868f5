#include "host/displays/screen_transition.h"

#include <chrono>
#include <cstdint>
#include <thread>

#include <gtest/gtest.h>

#include "platform/linux/main_loop/display_clock.h"

namespace {

using host::ScreenState;
using platform::UIInterfaceOrientation;

constexpr int width = 40;
constexpr int height = 80;
constexpr std::uint32_t red = 0xff0000;
constexpr std::uint32_t blue = 0x0000ff;
constexpr host::Scene home{ScreenState::Home, UIInterfaceOrientation::Portrait};
constexpr host::Scene locked{ScreenState::Locked, UIInterfaceOrientation::Portrait};
constexpr host::Scene app{ScreenState::App, UIInterfaceOrientation::Portrait};
constexpr host::Scene turned{ScreenState::Home, UIInterfaceOrientation::LandscapeLeft};

host::DrawnSurface surfaceOf(std::uint32_t color, int across = width, int down = height) {
  host::DrawnSurface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, across, down));
  const host::DrawingContext context(cairo_create(surface.get()));
  cairo_set_source_rgb(context.get(), color == red ? 1 : 0, 0, color == blue ? 1 : 0);
  cairo_paint(context.get());
  cairo_surface_flush(surface.get());
  return surface;
}

std::uint32_t pixel(const host::DrawnSurface& surface, int x, int y) {
  const unsigned char* row = cairo_image_surface_get_data(surface.get()) +
                             y * cairo_image_surface_get_stride(surface.get());
  return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xffffff;
}

bool hasLinks() {
  return platform::backend::DisplayClock::main().nextRefresh().has_value();
}

TEST(ScreenTransition, LeadsFromTheLastScreenToTheNextAndEnds) {
  host::ScreenTransition transition(std::chrono::seconds(2));
  const auto last = surfaceOf(red);
  const auto composed = [&transition] {
    auto drawn = surfaceOf(blue);
    transition.compose(drawn.get());
    return drawn;
  };
  transition.show(home, last.get());
  transition.show(home, last.get());
  EXPECT_FALSE(transition.isRunning());
  EXPECT_FALSE(hasLinks());
  transition.show(locked, last.get());
  EXPECT_TRUE(hasLinks());
  EXPECT_GT(pixel(composed(), 5, 5) >> 16, 0x80);
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  const std::uint32_t mixed = pixel(composed(), 5, 5);
  EXPECT_NE(mixed, red);
  EXPECT_NE(mixed, blue);
  // Another input begins anew from what is shown.
  transition.show(home, composed().get());
  transition.show(app, last.get());
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  const auto rising = composed();
  EXPECT_EQ(pixel(rising, 5, 2), red);
  EXPECT_EQ(pixel(rising, 5, height - 2), blue);
  std::this_thread::sleep_for(std::chrono::seconds(2));
  EXPECT_EQ(pixel(composed(), 5, 2), blue);
  EXPECT_FALSE(transition.isRunning());
  EXPECT_FALSE(hasLinks());
}

TEST(ScreenTransition, TurnsTheLastPictureAsItLayOnTheDevice) {
  host::ScreenTransition transition(std::chrono::seconds(100));
  const auto last = surfaceOf(red);
  const host::DrawingContext context(cairo_create(last.get()));
  cairo_set_source_rgb(context.get(), 0, 1, 0);
  cairo_rectangle(context.get(), 0, 0, width, height / 4.0);
  cairo_fill(context.get());
  transition.show(home, last.get());
  transition.show(turned, last.get());
  const auto drawn = surfaceOf(blue, height, width);
  transition.compose(drawn.get());
  EXPECT_GT(pixel(drawn, height - 5, width / 2) >> 8 & 0xff, 0xf0) << "its top is at the right";
  EXPECT_GT(pixel(drawn, 5, width / 2) >> 16, 0xf0);
  transition.jumpTo(home);
  EXPECT_FALSE(transition.isRunning());
}

TEST(ScreenTransition, IsLeftOutWithoutMotion) {
  host::ScreenTransition transition(std::chrono::seconds(0));
  const auto last = surfaceOf(red);
  transition.show(home, last.get());
  transition.show(locked, last.get());
  EXPECT_FALSE(transition.isRunning());
  EXPECT_FALSE(hasLinks());
}

}  // namespace
