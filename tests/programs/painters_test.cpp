// What a window and an output of a desktop show of frames that they keep.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

#include "host/desktop/output_painter.h"
#include "host/home_screen/screen_drawing.h"
#include "host/home_screen/screen_painter.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/main_loop/display_clock.h"
#include "platform/linux/main_loop/run_loop.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"
#include "tests/fixture/surfaces.h"

namespace {

using namespace testing_stage;
using namespace platform::backend;
using host::DrawnSurface;
using platform::UIInterfaceOrientation;

constexpr int frameCount = 5;
constexpr int pictureWidth = 52;
constexpr int pictureHeight = 90;
constexpr std::size_t budget = std::size_t{4} << 20;
const Bytes gif =
    makeGif({{red, 3}, {green, 3}, {blue, 3}, {white, 3}, {red, 3}}, pictureWidth, pictureHeight);

std::string fileOfFrame(int index) {
  return "/var/mobile/Library/Lumora/Wallpaper_both/Wallpaper_both_" + std::to_string(index) +
         ".png";
}

// Returns a picture with a patch that moves with the index.
platform::ImageRef pictureWithPatch(int index, std::uint8_t alpha) {
  auto palette = std::make_shared<Palette>();
  palette->colors = {{{40, 80, 120, alpha}, {250, 200, 0, 255}}};
  palette->count = 2;
  const PictureShape shape{pictureWidth, pictureHeight, PixelFormat::Indexed};
  Strips strips;
  for (int at = 0; at < shape.stripCount(); ++at) {
    auto strip = shape.makeStrip(at);
    for (int row = 0; row < strip->rowCount(); ++row) {
      for (int x = 0; x < pictureWidth; ++x) {
        const bool isPatch = std::abs(row - 20 - 9 * index) < 5 && std::abs(x - 8 * index) < 6;
        strip->row(row)[x] = isPatch ? 1 : 0;
      }
    }
    strips.push_back(std::move(strip));
  }
  return makeImage(shape, palette, std::move(strips));
}

DrawnSurface surfaceOf(int width, int height) {
  return DrawnSurface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
}

// A screen as a window shows it.
class PaintedScreen {
 public:
  PaintedScreen(host::Screen& screen, double scale)
      : screen_(screen), scale_(scale), painter_(screen, scale, budget) {}

  void draw(bool isAll) {
    const auto size = painter_.all().bounds();
    const bool isTurned = !shown_ || cairo_image_surface_get_width(shown_.get()) != size.width;
    if (isTurned) shown_ = surfaceOf(size.width, size.height);
    painter_.paint(shown_.get(), painter_.takeChangedPart(isAll || isTurned));
  }

  void compare() {
    const auto size = painter_.all().bounds();
    const DrawnSurface fresh = surfaceOf(size.width, size.height);
    host::drawPartOfScreen(screen_, fresh.get(), scale_, painter_.all());
    // The rounding of positions within a pixel depends on the part that is drawn.
    EXPECT_LE(largestDifference(shown_.get(), fresh.get()), scale_ == 1 ? 1 : 3) << "in the window";
  }

 private:
  host::Screen& screen_;
  const double scale_;
  host::ScreenPainter painter_;
  DrawnSurface shown_;
};

// The same on an output of a desktop.
class PaintedOutput {
 public:
  explicit PaintedOutput(host::SpringBoard& springBoard) : springBoard_(springBoard) {}

  void draw(const host::WallpaperPicture& picture) {
    const Region part = painter_.affectedPart(picture, area(), output_);
    if (!part.isEmpty()) painter_.paint(picture, area(), shown_.get(), part);
  }

  // Makes it larger or smaller by turns. If nothing is drawn in between, it is as it was.
  void resize() {
    output_.width = 620 - output_.width;
    std::swap(shown_, shownInOtherSize_);
  }

  void changeBackdrop() { options_.backdrop.red = 1; }

  void compare() {
    host::WallpaperPicture now;
    now.look(springBoard_.screen().root(), springBoard_.wallpaperNumber());
    // While there is no frame, the last one stays.
    if (!now.exists()) return;
    const DrawnSurface fresh = surfaceOf(output_.width, output_.height);
    host::OutputPainter(options_).paint(now, area(), fresh.get(), Region(output_));
    EXPECT_LE(largestDifference(shown_.get(), fresh.get()), 1) << "on the desktop";
  }

 private:
  // It spans another output.
  static platform::CGRect area() { return {0, 0, 400, 200}; }

  static host::DesktopOptions usedOptions() {
    host::DesktopOptions options;
    options.transition = std::chrono::seconds(0);
    options.backdrop.kind = host::BackdropKind::Color;
    options.maxKeptBytes = budget;
    return options;
  }

  host::SpringBoard& springBoard_;
  host::DesktopOptions options_ = usedOptions();
  host::OutputPainter painter_{options_};
  cairo_rectangle_int_t output_{0, 0, 300, 200};
  DrawnSurface shown_ = surfaceOf(output_.width, output_.height);
  DrawnSurface shownInOtherSize_ = surfaceOf(620 - output_.width, output_.height);
};

// A device that is painted whenever it needs display.
struct PaintedStage : Stage {
  PaintedStage(StageOptions options, const std::vector<Frame>& frames, double scale = 1)
      : Stage(options), screen(springBoard().screen(), scale) {
    launch();
    choose("SHARED", makeGif(frames, pictureWidth, pictureHeight));
    RunLoop::main().setDrawing([this](bool isAll) {
      screen.draw(isAll);
      picture.look(springBoard().screen().root(), springBoard().wallpaperNumber());
      output.draw(picture);
      if (!isExcepted) sometimesExcepted.draw(picture);
    });
    RunLoop::main().setNeedsDisplay();
  }
  ~PaintedStage() { RunLoop::main().setDrawing(nullptr); }

  static void rewriteFrames(std::uint8_t alpha) {
    for (int index = 0; index < frameCount; ++index) {
      platform::UIImagePNGRepresentation(*pictureWithPatch(index, alpha))
          ->writeToFileAtomically(fileOfFrame(index));
    }
  }

  // Frames are kept only if their files have not been changed for a moment.
  static void letFilesAge() { std::this_thread::sleep_for(std::chrono::milliseconds(2600)); }

  void set(const std::string& key, const std::string& value, const char* notification) {
    put(key, value);
    post(notification);
  }

  // Lets the clock on the screen move on.
  void passMinute() {
    DisplayClock::main().advance(std::chrono::minutes(1), [] { return true; });
    settle();
    springBoard().screen().showTime();
    settle();
    screen.compare();
  }

  // Plays three rounds. A comparison decodes the frame, so there is not one for each.
  void play(const char* after) {
    SCOPED_TRACE(after);
    constexpr int refreshesPerRound = 11;
    for (int each = 0; each < 3 * refreshesPerRound; ++each) {
      isExcepted = each % 9 > 3;
      refresh();
      if (each % 10 == 0) sometimesExcepted.resize();
      if (each % 7 != 0) continue;
      screen.compare();
      output.compare();
      if (isExcepted) continue;
      RunLoop::main().setNeedsPartialDisplay();
      settle();
      sometimesExcepted.compare();
    }
  }

  PaintedScreen screen;
  host::WallpaperPicture picture;
  PaintedOutput output{springBoard()};
  // This one misses some frames, and its size changes.
  PaintedOutput sometimesExcepted{springBoard()};
  bool isExcepted = false;
};

TEST(Painters, ShowKeptFramesAsIfDrawnAnew) {
  PaintedStage stage({}, {{red, 3}, {green, 3}, {blue, 3}, {white, 3}, {red, 3}});
  stage.play("the start");
  stage.letFilesAge();
  stage.play("the frames are kept");
  stage.rewriteFrames(100);
  stage.play("the frames are rewritten and translucent");
  stage.letFilesAge();
  stage.play("the frames are kept again");
  stage.set("SHARED_GIF_ALPHA", "0.4", lumora::alphaNeedsUpdatingNotification);
  stage.play("the opacity");
  stage.set("SHARED_SCALING_MODE", "FILL", lumora::control::updateWallpaper);
  stage.play("the scaling");
  stage.passMinute();
  stage.play("a minute");
  stage.output.changeBackdrop();
  stage.play("the backdrop");
  stage.rotate(UIInterfaceOrientation::LandscapeLeft);
  stage.play("the orientation");
  stage.set("SHARED_GIF_ALPHA", "1", lumora::alphaNeedsUpdatingNotification);
  stage.hideWallpaper();
  stage.rewriteFrames(255);
  stage.letFilesAge();
  stage.showWallpaper();
  stage.play("an app");
  std::filesystem::remove(stage.root(fileOfFrame(2)));
  stage.play("a frame is deleted");
  stage.set("SHARED_GIF_BLUR", "4", lumora::blurNeedsUpdatingNotification);
  stage.play("a blur");
  stage.choose("SHARED", makeGif({{blue, 3}, {white, 3}}, 30, 10));
  stage.play("another GIF");
}

TEST(Painters, ShowWindowsOfAnyScaleAsIfDrawnAnew) {
  PaintedStage stage({}, {{red, 3}, {green, 3}, {blue, 3}, {white, 3}, {red, 3}}, 1.3);
  stage.rewriteFrames(255);
  stage.letFilesAge();
  stage.play("the frames are kept");
  // A screenshot has another scale.
  stage.colorAt(195, 100);
  stage.passMinute();
  stage.springBoard().lock();
  stage.play("the lock screen");
  stage.colorAt(195, 100);
  stage.passMinute();
}

TEST(Painters, ShowADayOfFramesWithoutDrift) {
  PaintedStage stage({.refreshRate = 10},
                     {{red, 130}, {green, 70}, {blue, 33}, {white, 210}, {red, 47}});
  stage.rewriteFrames(255);
  stage.letFilesAge();
  const std::vector<double> delays{1.3, 0.7, 0.33, 2.1, 0.47};
  double time = 0;
  std::size_t next = 0;
  double shown = Stage::described("SHARED", lumora::description::framesShown);
  const auto countRefresh = [&] {
    RunLoop::main().handleDue();
    time += 0.1;
    if (next == delays.size()) {
      next = 0;
    } else if (time >= delays[next]) {
      time = 0;
      ++next;
      ++shown;
    }
    return true;
  };
  std::size_t memory = 0;
  for (int hour = 0; hour < 24; ++hour) {
    DisplayClock::main().advance(std::chrono::hours(1), countRefresh);
    if (hour == 0) memory = mallinfo2().uordblks;
  }
  EXPECT_EQ(Stage::described("SHARED", lumora::description::framesShown), shown);
  EXPECT_EQ(Stage::shownFrame("SHARED"), static_cast<int>(next) - 1);
  stage.screen.compare();
  stage.output.compare();
  constexpr std::size_t noise = 1 << 16;
  EXPECT_LT(mallinfo2().uordblks, memory + noise);
}

}  // namespace
