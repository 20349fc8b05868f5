#include <gtest/gtest.h>

#include "hooks/control_notifications.h"
#include "hooks/rotation.h"
#include "settings/device_paths.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using platform::UIInterfaceOrientation;

const Bytes gif = makeGif({{red}, {green}});

TEST(Control, TakesInTheFileBeforeTheHandlerReturns) {
  Stage stage;
  stage.launch();
  stage.leaveIncomingFile("SHARED", gif);
  lumora::handleSimpleLumoraMessage("com.brightfen.lumora.wallpaperNeedsUpdating");
  EXPECT_TRUE(stage.root.has(lumora::sharedGIFPath));
  EXPECT_EQ(Stage::stored("MODE_INDEX"), "1");
  stage.settle();
  EXPECT_EQ(Stage::stored("SHARED_WALLPAPER_SET"), "TRUE");
}

TEST(Control, InstallsEvenWithoutAnIncomingFile) {
  Stage stage;
  stage.launch();
  stage.root.write(lumora::sharedGIFPath, gif);
  stage.post("com.brightfen.lumora.wallpaperNeedsUpdating");
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
}

TEST(Control, PerformsTheActionOfEachName) {
  Stage stage;
  stage.launch();
  stage.root.write(lumora::sharedGIFPath, gif);
  stage.post("com.brightfen.lumora.updateWallpaper");
  EXPECT_EQ(Stage::stored("SHARED_WALLPAPER_SET"), "TRUE");
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
  SettingsWatch watch(stage.root);
  stage.post("com.brightfen.lumora.updateWallpaper");
  const int writesOfOneInstallation = watch.take().writes;
  stage.post("com.brightfen.lumora.removeGIFFromAllWallpapers");
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "FALSE");
  watch.take();
  // The installation has attached the view again, so resuming does not install it a second time.
  stage.post("com.brightfen.lumora.updateAnimating");
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  EXPECT_EQ(watch.take().writes, writesOfOneInstallation);
  stage.post("com.brightfen.lumora.updateAnimating");
  EXPECT_EQ(watch.take().writes, writesOfOneInstallation);
  for (const auto& [name, key] :
       {std::pair("com.brightfen.lumora.removeSharedGIFView", "SHARED_WALLPAPER_SET"),
        std::pair("com.brightfen.lumora.removeLockscreenGIFView", "LOCKSCREEN_WALLPAPER_SET"),
        std::pair("com.brightfen.lumora.removeHomescreenGIFView", "HOMESCREEN_WALLPAPER_SET")}) {
    Stage::put(key, "TRUE");
    stage.post(name);
    EXPECT_EQ(Stage::stored(key), "FALSE");
  }
}

TEST(Control, IgnoresUnknownNames) {
  Stage stage;
  stage.launch();
  stage.root.write(lumora::sharedGIFPath, gif);
  SettingsWatch watch(stage.root);
  for (const char* name : {"com.brightfen.lumora.updatewallpaper", "com.brightfen.lumora.", "",
                           "com.brightfen.lumora.updateWallpaper "}) {
    stage.post(name);
    lumora::handleSimpleLumoraMessage(name);
  }
  stage.settle();
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{0, 0}));
}

TEST(Control, SurvivesViewsRemovingNullObservers) {
  Stage stage;
  stage.launch();
  stage.choose("SHARED", gif);
  stage.choose("HOMESCREEN", gif);
  stage.post("com.brightfen.lumora.removeGIFFromAllWallpapers");
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "FALSE");
}

TEST(Control, DeliversPostsBetweenAddingAndRemovingAnObserver) {
  Stage stage;
  int heard = 0;
  platform::DarwinNotifyCenter center;
  // The bus refuses this name.
  center.addObserver(&heard, "a quotation mark: '", [](const std::string&) {});
  center.addObserver(&heard, "com.brightfen.lumora.test", [&](const std::string&) { ++heard; });
  platform::DarwinNotifyCenter::post("com.brightfen.lumora.test");
  stage.settle();
  EXPECT_EQ(heard, 1);
  center.removeEveryObserver(&heard);
  stage.post("com.brightfen.lumora.test");
  EXPECT_EQ(heard, 1);
}

TEST(Control, RunsActionsInTheOrderOfTheirNotifications) {
  Stage stage;
  stage.launch();
  stage.root.write(lumora::sharedGIFPath, gif);
  for (const char* name :
       {"com.brightfen.lumora.updateWallpaper", "com.brightfen.lumora.removeGIFFromAllWallpapers",
        "com.brightfen.lumora.updateWallpaper",
        "com.brightfen.lumora.removeGIFFromAllWallpapers"}) {
    platform::DarwinNotifyCenter::post(name);
  }
  stage.settle();
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "FALSE");
  EXPECT_EQ(Stage::view("SHARED")->superview(), nullptr);
}

TEST(Rotation, ReinstallsWhileAWallpaperIsSet) {
  Stage stage;
  stage.launch();
  stage.choose("SHARED", gif);
  Stage::put("ENABLED", "FALSE");
  auto turns = [&stage](int count) {
    SettingsWatch watch(stage.root);
    for (int each = 0; each < count; ++each) {
      lumora::LumoraDeviceDidRotate(nullptr, nullptr, nullptr);
    }
    stage.settle();
    return watch.take();
  };
  const auto one = turns(1);
  EXPECT_GT(one.writes, 0);
  EXPECT_EQ(turns(3), (SettingsWatch::Counts{3 * one.reads, 3 * one.writes}));
  for (const char* unset : {"FALSE", ""}) {
    Stage::put("WALLPAPER_SET", unset);
    EXPECT_EQ(turns(2), (SettingsWatch::Counts{2, 0}));
  }
}

TEST(Rotation, ReachesTheHandlerFromTheHost) {
  Stage stage;
  stage.launch();
  stage.choose("SHARED", gif);
  stage.rotate(UIInterfaceOrientation::LandscapeLeft);
  EXPECT_EQ(Stage::view("SHARED")->frame().width, 844 - 96);
  Stage::put("WALLPAPER_SET", "FALSE");
  stage.rotate(UIInterfaceOrientation::Portrait);
  EXPECT_EQ(Stage::view("SHARED")->frame().width, 844 - 96);
}

}  // namespace
