#include <chrono>
#include <thread>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "placement/gating.h"
#include "placement/host_wallpaper.h"
#include "placement/installation.h"
#include "placement/scaling.h"
#include "placement/view_slots.h"
#include "platform/linux/device.h"
#include "platform/linux/views/key_value_observing.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using platform::CGRect;
using platform::UIInterfaceOrientation;
using platform::UIViewContentMode;

const Bytes gif = makeGif({{red}, {green}});

void install(Stage& stage) {
  stage.post(lumora::control::updateWallpaper);
}

// A launched device in the given mode, with a GIF for every location.
struct Furnished : Stage {
  explicit Furnished(const char* mode, StageOptions options = {}) : Stage(options) {
    launch();
    fillLibrary(gif);
    put("MODE_INDEX", mode);
  }
};

TEST(Placement, InstallsOneViewInSharedMode) {
  Furnished stage("1");
  install(stage);
  const auto view = Stage::view("SHARED");
  const auto host = Stage::hostView("SHARED");
  EXPECT_EQ(view->superview(), host);
  EXPECT_EQ(view->tag(), 1337);
  EXPECT_EQ(host->tag(), 0);
  EXPECT_EQ(view->frame(), (CGRect{0, 0, 390, 844 - 96}));
  EXPECT_EQ(view->imageView()->frame(), (CGRect{0, 0, 390, 844 - 96}));
  EXPECT_EQ(Stage::view("LOCKSCREEN"), nullptr);
  EXPECT_EQ(Stage::view("HOMESCREEN"), nullptr);
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
  EXPECT_EQ(Stage::stored("SHARED_WALLPAPER_SET"), "TRUE");
  EXPECT_EQ(Stage::stored("LOCKSCREEN_WALLPAPER_SET"), std::nullopt);
}

TEST(Placement, InstallsAViewPerScreenInSeparateMode) {
  Furnished stage("0");
  install(stage);
  EXPECT_EQ(Stage::hostView("SHARED"), nullptr);
  EXPECT_EQ(Stage::view("LOCKSCREEN")->superview(), Stage::hostView("LOCKSCREEN"));
  EXPECT_EQ(Stage::view("HOMESCREEN")->superview(), Stage::hostView("HOMESCREEN"));
  EXPECT_EQ(Stage::hostView("LOCKSCREEN")->tag(), 1);
  EXPECT_EQ(Stage::hostView("HOMESCREEN")->tag(), 2);
  // The lock screen has no dock.
  EXPECT_EQ(Stage::view("LOCKSCREEN")->frame(), (CGRect{0, 0, 390, 844}));
  EXPECT_EQ(Stage::view("HOMESCREEN")->frame(), (CGRect{0, 0, 390, 748}));
  EXPECT_EQ(Stage::described("LOCKSCREEN", lumora::description::framesInCache), 2);
  EXPECT_EQ(Stage::described("HOMESCREEN", lumora::description::framesInCache), 2);
  EXPECT_EQ(Stage::stored("LOCKSCREEN_WALLPAPER_SET"), "TRUE");
  EXPECT_EQ(Stage::stored("HOMESCREEN_WALLPAPER_SET"), "TRUE");
  EXPECT_EQ(Stage::stored("SHARED_WALLPAPER_SET"), std::nullopt);
}

TEST(Placement, ChangesNothingWithoutAReadableGif) {
  struct Case {
    const char* mode;
    const char* location;
    const char* path;
  };
  const Case cases[] = {
      {"1", "0", lumora::sharedGIFPath},
      {"0", "0", lumora::lockscreenGIFPath},
      {"0", "1", lumora::homescreenGIFPath},
  };
  Stage stage;
  stage.launch();
  for (const Case& each : cases) {
    for (const bool isDamaged : {false, true}) {
      SCOPED_TRACE(std::string(each.path) + (isDamaged ? " damaged" : " missing"));
      stage.fillLibrary(gif);
      std::filesystem::remove(stage.root(each.path));
      if (isDamaged) stage.root.write(each.path, std::string("GIF89a, or so it says"));
      Stage::put("MODE_INDEX", each.mode);
      Stage::put("LOCATION_INDEX", each.location);
      SettingsWatch watch(stage.root);
      install(stage);
      EXPECT_EQ(watch.take().writes, 0);
      EXPECT_EQ(Stage::view("SHARED"), nullptr);
      EXPECT_EQ(Stage::view("LOCKSCREEN"), nullptr);
      EXPECT_TRUE(platform::backend::observersOf(*Stage::hostView("SHARED")).empty());
    }
  }
}

TEST(Placement, NeedsOnlyTheSelectedScreensGif) {
  Furnished stage("0");
  std::filesystem::remove(stage.root(lumora::homescreenGIFPath));
  std::filesystem::create_directory(stage.root(lumora::homescreenGIFPath));
  install(stage);
  EXPECT_NE(Stage::view("HOMESCREEN")->superview(), nullptr);
  EXPECT_EQ(Stage::described("LOCKSCREEN", lumora::description::framesInCache), 2);
  EXPECT_EQ(Stage::stored("LOCKSCREEN_WALLPAPER_SET"), "TRUE");
  EXPECT_EQ(Stage::stored("HOMESCREEN_WALLPAPER_SET"), std::nullopt);
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
}

TEST(Placement, OnlyFramesAndScalesViewsInUnknownModes) {
  Furnished stage("1");
  install(stage);
  Stage::put("MODE_INDEX", "2");
  Stage::put("WALLPAPER_SET", "FALSE");
  Stage::put("DOCK_ENABLED", "FALSE");
  Stage::put("SHARED_SCALING_MODE", "FILL");
  const auto host = Stage::hostView("SHARED");
  const auto listener = platform::backend::observersOf(*host);
  stage.takePosted();
  install(stage);
  EXPECT_EQ(Stage::view("SHARED")->frame(), (CGRect{0, 0, 390, 844}));
  EXPECT_EQ(Stage::view("SHARED")->imageView()->contentMode(), UIViewContentMode::ScaleAspectFill);
  EXPECT_EQ(Stage::view("LOCKSCREEN"), nullptr);
  EXPECT_EQ(lumora::lockscreenListener.load(), nullptr);
  EXPECT_EQ(Stage::hostView("SHARED"), host);
  EXPECT_EQ(platform::backend::observersOf(*host), listener);
  EXPECT_TRUE(stage.takePosted().empty());
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
}

TEST(Placement, ReusesEverythingInASecondInstallation) {
  Furnished stage("1");
  install(stage);
  const auto view = Stage::view("SHARED");
  const auto host = Stage::hostView("SHARED");
  const auto above = std::make_shared<platform::UIView>();
  host->addSubview(above);
  install(stage);
  EXPECT_EQ(Stage::view("SHARED"), view);
  EXPECT_EQ(host->subviews(), (std::vector<std::shared_ptr<platform::UIView>>{view, above}));
  EXPECT_EQ(platform::backend::observersOf(*host).size(), 1U);
}

TEST(Placement, AdoptsTheLastViewWithItsTag) {
  Furnished stage("1");
  for (const lumora::ViewSlot& slot : lumora::viewSlots) {
    const std::string identifier = slot.location.identifier;
    SCOPED_TRACE(identifier);
    Stage::put("MODE_INDEX", identifier == "SHARED" ? "1" : "0");
    install(stage);
    const auto other = stage.makeView(identifier);
    other->setTag(1337);
    Stage::hostView(identifier)->addSubview(other);
    install(stage);
    EXPECT_EQ(slot.view.load(), other);
    // It also receives messages: of two views with the same name the later one does.
    lumora::setWallpaperAnimating(slot.location.id, true);
    stage.settle();
    EXPECT_TRUE(Stage::isPlaying(identifier));
  }
}

TEST(Placement, ReusesViewsInNewHostViewsAfterModeChanges) {
  Furnished stage("1");
  install(stage);
  const auto shared = Stage::view("SHARED");
  const std::weak_ptr<platform::UIView> oldHost = Stage::hostView("SHARED");
  Stage::put("MODE_INDEX", "0");
  install(stage);
  EXPECT_TRUE(oldHost.expired());
  EXPECT_EQ(Stage::view("SHARED"), shared);
  EXPECT_EQ(shared->superview(), nullptr);
  Stage::put("MODE_INDEX", "1");
  install(stage);
  EXPECT_EQ(Stage::view("SHARED"), shared);
  EXPECT_EQ(shared->superview(), Stage::hostView("SHARED"));
}

TEST(Placement, LeavesRoomForTheSideDockOnLandscapePhones) {
  Furnished stage("0");
  install(stage);
  for (const auto orientation :
       {UIInterfaceOrientation::LandscapeLeft, UIInterfaceOrientation::LandscapeRight}) {
    stage.rotate(orientation);
    EXPECT_EQ(Stage::view("HOMESCREEN")->frame(), (CGRect{0, 0, 844 - 96, 390}));
    EXPECT_EQ(Stage::view("LOCKSCREEN")->frame(), (CGRect{0, 0, 844, 390}));
  }
  stage.rotate(UIInterfaceOrientation::PortraitUpsideDown);
  EXPECT_EQ(Stage::view("HOMESCREEN")->frame(), (CGRect{0, 0, 390, 748}));
}

TEST(Placement, LeavesRoomForTheBottomDockOnPads) {
  Furnished stage("1", {.idiom = host::Idiom::Pad});
  install(stage);
  EXPECT_EQ(Stage::view("SHARED")->frame(), (CGRect{0, 0, 820, 1180 - 110}));
  stage.rotate(UIInterfaceOrientation::LandscapeLeft);
  EXPECT_EQ(Stage::view("SHARED")->frame(), (CGRect{0, 0, 1180, 820 - 110}));
}

platform::CGFloat fakeHeight = 0;
platform::CGFloat fakeDefaultHeight(platform::id /*self*/, platform::SEL /*selector*/) {
  return fakeHeight;
}

TEST(Placement, FallsBackToTheStoredDockHeight) {
  Furnished stage("1");
  // Replaces the library's recorder, so that nothing is recorded.
  const auto metaclass =
      platform::object_getClass(platform::classObject(platform::objc_getClass("SBDockView")));
  platform::IMP recorder = nullptr;
  platform::MSHookMessageEx(metaclass, platform::sel_registerName("defaultHeight"),
                            reinterpret_cast<platform::IMP>(fakeDefaultHeight), &recorder);
  struct Case {
    platform::CGFloat live;
    const char* stored;
    platform::CGFloat used;
  };
  for (const Case& each : {Case{0, "83.5", 83.5}, Case{844, "83.5", 83.5}, Case{843, "83.5", 843},
                           Case{-1, "", 0}, Case{0, "83.1", 83.099998}}) {
    fakeHeight = each.live;
    Stage::put("DOCK_HEIGHT", each.stored);
    install(stage);
    EXPECT_EQ(Stage::view("SHARED")->frame().height, 844 - each.used) << each.live;
  }
  // It is compared with the screen's height in portrait orientation.
  fakeHeight = 500;
  stage.rotate(UIInterfaceOrientation::LandscapeLeft);
  EXPECT_EQ(Stage::view("SHARED")->frame().width, 844 - 500);
  stage.rotate(UIInterfaceOrientation::Portrait);
  Stage::put("DOCK_ENABLED", "FALSE");
  install(stage);
  EXPECT_EQ(Stage::view("SHARED")->frame().height, 844);
}

TEST(Placement, FramesAndScalesEveryViewInAnyMode) {
  Furnished stage("0");
  install(stage);
  Stage::put("MODE_INDEX", "1");
  install(stage);
  for (const auto& [mode, dock, height] : {std::tuple("0", "FALSE", 844), {"1", "TRUE", 748}}) {
    Stage::put("MODE_INDEX", mode);
    Stage::put("DOCK_ENABLED", dock);
    Stage::view("LOCKSCREEN")->setFrame({});
    install(stage);
    EXPECT_EQ(Stage::view("SHARED")->frame().height, height);
    EXPECT_EQ(Stage::view("LOCKSCREEN")->frame().height, 844);
    EXPECT_EQ(Stage::view("HOMESCREEN")->frame().height, height);
  }
  Stage::put("SHARED_SCALING_MODE", "FULLSCREEN");
  Stage::put("LOCKSCREEN_SCALING_MODE", "FILL");
  Stage::put("HOMESCREEN_SCALING_MODE", "fill");
  install(stage);
  auto mode = [](const char* identifier) {
    return Stage::view(identifier)->imageView()->contentMode();
  };
  EXPECT_EQ(mode("SHARED"), UIViewContentMode::ScaleToFill);
  EXPECT_EQ(mode("LOCKSCREEN"), UIViewContentMode::ScaleAspectFill);
  EXPECT_EQ(mode("HOMESCREEN"), UIViewContentMode::ScaleAspectFit);
  EXPECT_EQ(Stage::view("SHARED")->UIView::contentMode(), UIViewContentMode::ScaleToFill);
  // The setting is read when the main queue runs the update.
  lumora::updateScalingModeOfWallpaper(Stage::view("SHARED"), "SHARED");
  Stage::put("SHARED_SCALING_MODE", "FILL");
  stage.settle();
  EXPECT_EQ(mode("SHARED"), UIViewContentMode::ScaleAspectFill);
}

TEST(Placement, WaitsForABlockedMainThreadOnlyOnce) {
  Furnished stage("1");
  lumora::updateWallpaperImages();
  // All steps share one limit of five seconds; setting up the new view may take another five.
  std::this_thread::sleep_for(std::chrono::seconds(13));
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
  stage.settle();
  EXPECT_EQ(Stage::view("SHARED")->frame(), (CGRect{0, 0, 390, 748}));
}

}  // namespace
