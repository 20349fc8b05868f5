#include "placement/removal.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;

const Bytes gif = makeGif({{red}, {green}});

constexpr auto removeAll = lumora::control::removeGIFFromAllWallpapers;
constexpr auto removeUnneeded = "kLWGIFViewNeedsToRemoveUnneededViewNotification";

struct Separate : Stage {
  Separate() {
    launch();
    choose("LOCKSCREEN", gif);
    choose("HOMESCREEN", gif);
  }
};

TEST(Removal, AffectsOnlyTheGivenLocation) {
  Separate stage;
  stage.post(lumora::control::removeLockscreenGIFView);
  EXPECT_EQ(Stage::view("LOCKSCREEN")->superview(), nullptr);
  EXPECT_FALSE(stage.root.has(lumora::lockscreenGIFPath));
  EXPECT_FALSE(stage.root.has("/var/mobile/Library/Lumora/Wallpaper_lockscreen"));
  EXPECT_EQ(Stage::stored("LOCKSCREEN_WALLPAPER_SET"), "FALSE");
  EXPECT_NE(Stage::view("HOMESCREEN")->superview(), nullptr);
  EXPECT_TRUE(stage.root.has(lumora::homescreenGIFPath));
  EXPECT_EQ(Stage::stored("HOMESCREEN_WALLPAPER_SET"), "TRUE");
  // The home screen's view and files are removed as well, but its playback is not stopped.
  ASSERT_TRUE(Stage::isPlaying("HOMESCREEN"));
  stage.post(lumora::control::removeHomescreenGIFView);
  EXPECT_EQ(Stage::view("HOMESCREEN")->superview(), nullptr);
  EXPECT_FALSE(stage.root.has(lumora::homescreenGIFPath));
  EXPECT_FALSE(stage.root.has("/var/mobile/Library/Lumora/Wallpaper_homescreen"));
  EXPECT_TRUE(Stage::isPlaying("HOMESCREEN"));
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
}

TEST(Removal, ContinuesAfterFiveSecondsWithoutTheMainThread) {
  Separate stage;
  lumora::removeLockscreenGIFView();
  lumora::removeGIFFromAllWallpapers();
  std::this_thread::sleep_for(std::chrono::seconds(13));
  EXPECT_EQ(Stage::stored("LOCKSCREEN_WALLPAPER_SET"), "FALSE");
  EXPECT_EQ(Stage::stored("HOMESCREEN_WALLPAPER_SET"), "FALSE");
  stage.settle();
  EXPECT_EQ(Stage::view("HOMESCREEN")->superview(), nullptr);
}

TEST(Removal, DeletesFilesEvenWithoutAView) {
  Stage stage;
  stage.launch();
  stage.root.write(lumora::sharedGIFPath, gif);
  stage.root.write("/var/mobile/Library/Lumora/Wallpaper_both/Wallpaper_both_0.png", gif);
  SettingsWatch watch(stage.root);
  stage.post(lumora::control::removeSharedGIFView);
  EXPECT_EQ(watch.take().writes, 1);
  EXPECT_EQ(Stage::stored("SHARED_WALLPAPER_SET"), "FALSE");
  EXPECT_FALSE(stage.root.has(lumora::sharedGIFPath));
  EXPECT_FALSE(stage.root.has("/var/mobile/Library/Lumora/Wallpaper_both"));
  EXPECT_EQ(Stage::view("SHARED"), nullptr);
}

TEST(Removal, KeepsTheFilesWhenRemovingAll) {
  Separate stage;
  SettingsWatch watch(stage.root);
  stage.post(removeAll);
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{4, 4}));
  for (const char* key : {"WALLPAPER_SET", "SHARED_WALLPAPER_SET", "LOCKSCREEN_WALLPAPER_SET",
                          "HOMESCREEN_WALLPAPER_SET"}) {
    EXPECT_EQ(Stage::stored(key), "FALSE");
  }
  EXPECT_EQ(Stage::view("LOCKSCREEN")->superview(), nullptr);
  EXPECT_EQ(Stage::view("HOMESCREEN")->superview(), nullptr);
  EXPECT_TRUE(stage.root.has("/var/mobile/Library/Lumora/Wallpaper_lockscreen"));
  EXPECT_TRUE(stage.root.has(lumora::homescreenGIFPath));
}

TEST(Removal, CanBeUndoneWithTheSameViews) {
  Separate stage;
  const auto lockScreen = Stage::view("LOCKSCREEN");
  const auto homeScreen = Stage::view("HOMESCREEN");
  stage.post(removeAll);
  stage.takePosted();
  stage.post(lumora::control::updateWallpaper);
  EXPECT_EQ(Stage::view("LOCKSCREEN"), lockScreen);
  EXPECT_EQ(Stage::view("HOMESCREEN"), homeScreen);
  EXPECT_NE(lockScreen->superview(), nullptr);
  EXPECT_NE(homeScreen->superview(), nullptr);
  // The caches are reused, and only the selected location is announced.
  EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{lumora::didStartAnimatingNotification}));
}

TEST(Removal, TakesDownUnneededViewsAfterAModeChange) {
  Separate stage;
  Stage::put("MODE_INDEX", "2");
  stage.post(removeUnneeded);
  EXPECT_NE(Stage::view("HOMESCREEN")->superview(), nullptr);
  Stage::put("MODE_INDEX", "1");
  stage.post(removeUnneeded);
  EXPECT_EQ(Stage::view("LOCKSCREEN")->superview(), nullptr);
  EXPECT_EQ(Stage::view("HOMESCREEN")->superview(), nullptr);
  EXPECT_TRUE(Stage::isPlaying("HOMESCREEN"));
  EXPECT_EQ(Stage::stored("LOCKSCREEN_WALLPAPER_SET"), "FALSE");
  EXPECT_EQ(Stage::stored("HOMESCREEN_WALLPAPER_SET"), "FALSE");

  stage.choose("SHARED", gif);
  stage.post(removeUnneeded);
  EXPECT_NE(Stage::view("SHARED")->superview(), nullptr);
  Stage::put("MODE_INDEX", "0");
  stage.post(removeUnneeded);
  EXPECT_EQ(Stage::view("SHARED")->superview(), nullptr);
  EXPECT_EQ(Stage::stored("SHARED_WALLPAPER_SET"), "FALSE");
}

}  // namespace
