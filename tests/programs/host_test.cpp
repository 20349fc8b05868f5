#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/control/status_report.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using host::ScreenState;
using platform::UIInterfaceOrientation;

nlohmann::json report(Stage& stage) {
  return nlohmann::json::parse(host::statusReport(stage.springBoard()));
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

TEST(Host, DrawsTheStillWallpaperAroundTheAnimatedOne) {
  Stage stage;
  stage.launch();
  const Color home = stage.colorAt(195, 600);
  stage.choose("SHARED", makeGif({{red}}, 39, 10));
  stage.advance(std::chrono::seconds(1));
  // The fitted image leaves the still wallpaper visible above and below.
  EXPECT_EQ(stage.colorAt(195, 600), home);
  EXPECT_EQ(stage.colorAt(10, 370), red);
  Stage::put("SHARED_SCALING_MODE", "FULLSCREEN");
  stage.post(lumora::control::updateWallpaper);
  EXPECT_EQ(stage.colorAt(195, 600), red);
  // The animated wallpaper does not cover the dock's area.
  EXPECT_NE(stage.colorAt(3, 843), red);
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
