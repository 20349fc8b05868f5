#include <algorithm>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/control/status_report.h"
#include "host/home_screen/screen_drawing.h"
#include "host/wallpaper/drawn_surface.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using host::ScreenState;
using platform::UIInterfaceOrientation;

nlohmann::json report(Stage& stage) {
  return nlohmann::json::parse(host::statusReport(stage.springBoard()));
}

struct Range {
  int darkest;
  int brightest;
};

// Returns the range of brightness in a part of the screen.
Range rangeIn(Stage& stage, const cairo_rectangle_int_t& part) {
  host::Screen& screen = stage.springBoard().screen();
  screen.followWallpaper(1);
  const auto size = host::pixelsOf(screen, 1);
  const host::DrawnSurface drawn(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height));
  host::drawPartOfScreen(screen, drawn.get(), 1, platform::backend::Region(size));
  Range range{255, 0};
  for (int y = part.y; y < part.y + part.height; ++y) {
    const unsigned char* row =
        cairo_image_surface_get_data(drawn.get()) + y * cairo_image_surface_get_stride(drawn.get());
    for (int x = part.x; x < part.x + part.width; ++x) {
      const int brightness = row[4 * x + 1];
      range = {std::min(range.darkest, brightness), std::max(range.brightest, brightness)};
    }
  }
  return range;
}

TEST(Host, ShowsAndHidesWallpapersByScreenState) {
  Stage stage({.startsLocked = true});
  stage.launch();
  auto& springBoard = stage.springBoard();
  const auto wallpaper = Stage::hostView("SHARED");
  EXPECT_EQ(springBoard.state(), ScreenState::Locked);
  EXPECT_FALSE(wallpaper->hidden());
  springBoard.openApp();
  EXPECT_TRUE(wallpaper->hidden());
  springBoard.closeApp();
  EXPECT_EQ(springBoard.state(), ScreenState::Home);
  EXPECT_FALSE(wallpaper->hidden());
  springBoard.closeApp();
  EXPECT_EQ(springBoard.state(), ScreenState::Home);
  springBoard.turnDisplay(false);
  EXPECT_TRUE(wallpaper->hidden());
  springBoard.lock();
  EXPECT_EQ(springBoard.state(), ScreenState::Off);
  springBoard.turnDisplay(true);
  EXPECT_EQ(springBoard.state(), ScreenState::Locked);
}

TEST(Host, RotatesEverythingExceptTheScreenBounds) {
  Stage stage;
  stage.launch();
  stage.rotate(UIInterfaceOrientation::LandscapeRight);
  EXPECT_EQ(platform::mainScreenBounds(), (platform::CGRect{0, 0, 390, 844}));
  EXPECT_EQ(Stage::hostView("SHARED")->frame(), (platform::CGRect{0, 0, 844, 390}));
  const auto status = report(stage);
  EXPECT_EQ(status["orientation"], "left");
  EXPECT_EQ(status["size"], (nlohmann::json{390, 844}));
  for (const auto& view : status["views"]) {
    if (view["class"] == "SBDockView") {
      EXPECT_EQ(view["frame"], (nlohmann::json{844.0 - 96, 0.0, 96.0, 390.0}));
    }
  }
}

TEST(Host, KeepsDockAndWallpaperApartOnSquareScreens) {
  Stage stage({.width = 500, .height = 500});
  stage.launch();
  stage.choose("SHARED", makeGif({{red}}));
  stage.rotate(UIInterfaceOrientation::LandscapeLeft);
  EXPECT_EQ(Stage::view("SHARED")->frame(), (platform::CGRect{0, 0, 404, 500}));
  const auto status = report(stage);
  for (const auto& view : status["views"]) {
    if (view["class"] == "SBDockView") {
      EXPECT_EQ(view["frame"], (nlohmann::json{404.0, 0.0, 96.0, 500.0}));
    }
  }
}

TEST(Host, ShowsTheBackdropBesideTheAnimatedWallpaper) {
  Stage stage;
  stage.launch();
  const Color still = stage.colorAt(195, 600);
  const Color darkRed{140, 0, 0};
  stage.choose("SHARED", makeGif({{red}}, 39, 10));
  stage.advance(std::chrono::seconds(1));
  EXPECT_EQ(stage.colorAt(10, 370), red);
  EXPECT_EQ(stage.colorAt(195, 600), darkRed);
  const auto shows = [&stage](const std::string& backdrop) {
    stage.springBoard().setBackdrop(*host::parsedBackdrop(backdrop));
    return stage.colorAt(195, 600);
  };
  EXPECT_EQ(shows("#00ff00"), green);
  EXPECT_EQ(shows("still"), still);
  stage.root.write("/blue.gif", makeGif({{blue}}));
  EXPECT_EQ(shows(stage.root("/blue.gif")), blue);
  EXPECT_EQ(shows("blur"), darkRed);
  stage.rotate(UIInterfaceOrientation::LandscapeLeft);
  EXPECT_EQ(stage.colorAt(600, 40), darkRed);
  stage.rotate(UIInterfaceOrientation::Portrait);
  // The animated wallpaper does not cover the dock's area, also where there is no dock.
  Stage::put("SHARED_SCALING_MODE", "FULLSCREEN");
  stage.post(lumora::control::updateWallpaper);
  EXPECT_EQ(stage.colorAt(195, 600), red);
  EXPECT_EQ(stage.colorAt(3, 843), darkRed);
  stage.springBoard().lock();
  const Color atTheSeam = stage.colorAt(195, 747);
  EXPECT_GT(atTheSeam[0], stage.colorAt(195, 748)[0]);
  // Another GIF has another copy.
  stage.springBoard().goHome();
  stage.choose("SHARED", makeGif({{blue}}, 39, 10));
  stage.springBoard().noteNewWallpaper();
  stage.advance(std::chrono::seconds(1));
  EXPECT_EQ(stage.colorAt(3, 843), (Color{0, 0, 140}));
  stage.post(lumora::control::removeGIFFromAllWallpapers);
  EXPECT_EQ(stage.colorAt(195, 600), still);
}

TEST(Host, WritesReadablyOnAnyWallpaper) {
  Stage stage;
  Stage::put("SHARED_SCALING_MODE", "FULLSCREEN");
  Stage::put("DOCK_ENABLED", "0");
  stage.launch();
  constexpr cairo_rectangle_int_t statusBar{20, 10, 60, 24};
  constexpr cairo_rectangle_int_t label{30, 120, 60, 20};
  constexpr cairo_rectangle_int_t clock{110, 90, 180, 120};
  constexpr cairo_rectangle_int_t hint{130, 800, 130, 44};
  constexpr cairo_rectangle_int_t plate{18, 762, 10, 10};
  constexpr Color night{0, 0, 0};
  constexpr int dark = 60;
  constexpr int bright = 240;
  // Text and picture are as different as possible.
  const auto expectText = [&](const auto&... parts) {
    for (const auto& part : {parts...}) {
      const Range range = rangeIn(stage, part);
      EXPECT_LT(range.darkest, dark) << part.y;
      EXPECT_GT(range.brightest, bright) << part.y;
    }
  };
  // The first frame decides, for all of them.
  stage.choose("SHARED", makeGif({{white, 10}, {night, 10}}));
  stage.refresh(9);
  expectText(statusBar, label);
  EXPECT_LT(rangeIn(stage, plate).brightest, bright);
  stage.springBoard().lock();
  expectText(clock, hint);
  for (int each = 0; each < 30 && Stage::shownFrame("SHARED") != 1; ++each) stage.refresh();
  EXPECT_EQ(Stage::shownFrame("SHARED"), 1);
  EXPECT_LT(rangeIn(stage, clock).brightest, bright);
  stage.choose("SHARED", makeGif({{night, 10}, {white, 10}}));
  stage.springBoard().noteNewWallpaper();
  stage.refresh(9);
  expectText(clock, hint);
  stage.springBoard().goHome();
  expectText(statusBar, label);
  EXPECT_GT(rangeIn(stage, plate).darkest, 30);
}

TEST(Host, ShowsTheTimeOnceOnEveryScreen) {
  Stage stage;
  stage.launch();
  host::Screen& screen = stage.springBoard().screen();
  const auto partOfTime = [&] {
    stage.colorAt(0, 0);
    screen.takeRedrawnPart(1);
    stage.advance(std::chrono::minutes(1));
    screen.showTime();
    return screen.takeRedrawnPart(1).bounds();
  };
  constexpr int statusBarHeight = 44;
  const auto home = partOfTime();
  EXPECT_GT(home.height, 0);
  EXPECT_LT(home.y + home.height, statusBarHeight);
  stage.springBoard().lock();
  EXPECT_GT(partOfTime().y, statusBarHeight);
  stage.springBoard().openApp();
  const auto app = partOfTime();
  EXPECT_GT(app.height, 0);
  EXPECT_LT(app.y + app.height, statusBarHeight);
}

TEST(View, FollowsItsAutoresizingMaskAndChangesSuperviews) {
  const auto parent = std::make_shared<platform::UIView>();
  const auto child = std::make_shared<platform::UIView>();
  child->setAutoresizingMask(platform::UIViewAutoresizingFlexibleWidth);
  parent->addSubview(child);
  parent->setFrame({5, 5, 100, 50});
  EXPECT_EQ(child->frame(), (platform::CGRect{0, 0, 100, 0}));
  const auto other = std::make_shared<platform::UIView>();
  other->addSubview(child);
  EXPECT_TRUE(parent->subviews().empty());
  EXPECT_EQ(child->superview(), other);
  child->removeFromSuperview();
  child->removeFromSuperview();
  EXPECT_EQ(child->superview(), nullptr);
}

}  // namespace
