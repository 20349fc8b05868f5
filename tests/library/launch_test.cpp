#include "hooks/launch.h"

#include <utility>

#include <gtest/gtest.h>

#include "hooks/dock_height.h"
#include "platform/file_manager.h"
#include "settings/device_paths.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;

const Bytes gif = makeGif({{red}, {green}});

bool wasSetUpBeforeTheHost = false;
void (*hostLaunch)(platform::id, platform::SEL, platform::id) = nullptr;

void watchedHostLaunch(platform::id self, platform::SEL selector, platform::id application) {
  wasSetUpBeforeTheHost = platform::fileExistsAtPath(lumora::libraryDirectory);
  hostLaunch(self, selector, application);
}

TEST(Launch, OnlyCreatesTheLibraryDirectoryWithoutSettings) {
  Stage stage;
  hostLaunch = std::exchange(lumora::previousApplicationDidFinishLaunching, watchedHostLaunch);
  stage.launch();
  EXPECT_FALSE(wasSetUpBeforeTheHost);
  EXPECT_TRUE(std::filesystem::is_directory(stage.root(lumora::libraryDirectory)));
  EXPECT_EQ(Stage::view("SHARED"), nullptr);
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), std::nullopt);
}

TEST(Launch, KeepsAFileInPlaceOfTheLibraryDirectory) {
  Stage stage;
  stage.root.write("/var/mobile/Library/Lumora", std::string("a file"));
  stage.launch();
  EXPECT_TRUE(std::filesystem::is_regular_file(stage.root("/var/mobile/Library/Lumora")));
}

struct Case {
  const char* enabled;
  const char* wallpaperSet;
  const char* mode;
  // The identifier of the view that plays; nullptr if none does.
  const char* started;
};

void PrintTo(const Case& each, std::ostream* stream) {
  *stream << each.enabled << "/" << each.wallpaperSet << "/" << each.mode;
}

class LaunchDecision : public testing::TestWithParam<Case> {};

TEST_P(LaunchDecision, FollowsTheSettings) {
  const Case& each = GetParam();
  Stage stage;
  stage.fillLibrary(gif);
  Stage::put("ENABLED", each.enabled);
  Stage::put("WALLPAPER_SET", each.wallpaperSet);
  Stage::put("MODE_INDEX", each.mode);
  stage.launch();
  for (const char* identifier : {"SHARED", "LOCKSCREEN", "HOMESCREEN"}) {
    const bool isStarted = each.started != nullptr && std::string(each.started) == identifier;
    EXPECT_EQ(Stage::view(identifier) && Stage::isPlaying(identifier), isStarted) << identifier;
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, LaunchDecision,
    testing::Values(Case{"", "TRUE", "", "SHARED"}, Case{"TRUE", "TRUE", "1", "SHARED"},
                    Case{"", "TRUE", "0", "LOCKSCREEN"}, Case{"FALSE", "TRUE", "1", nullptr},
                    Case{"TRUE", "FALSE", "1", nullptr}, Case{"TRUE", "", "0", nullptr}));

TEST(Launch, ReadsTheSettingsFileOncePerValue) {
  Stage stage;
  Stage::put("DOCK_HEIGHT", "96.000000");
  SettingsWatch watch(stage.root);
  stage.launch();
  // The home screen's layout queries the dock once; then "ENABLED" and "WALLPAPER_SET" are read.
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{3, 1}));
}

TEST(DockHeight, IsRecordedOnEveryQueryAndReturnedUnchanged) {
  Stage stage;
  EXPECT_EQ(Stage::stored("DOCK_HEIGHT"), std::nullopt);
  Stage::put("DOCK_ENABLED", "FALSE");
  EXPECT_EQ(host::DockView::defaultHeight(), 96);
  EXPECT_EQ(Stage::stored("DOCK_HEIGHT"), "96.000000");
  Stage::put("DOCK_HEIGHT", "7");
  stage.launch();
  EXPECT_EQ(Stage::stored("DOCK_HEIGHT"), "96.000000");
  EXPECT_EQ(Stage::stored("DOCK_ENABLED"), "FALSE");
}

TEST(DockHeight, IsRecordedEvenWithoutASettingsFile) {
  Stage stage;
  host::DockView::defaultHeight();
  EXPECT_EQ(Stage::stored("DOCK_HEIGHT"), "96.000000");
  SettingsWatch watch(stage.root);
  host::DockView::defaultHeight();
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{1, 1}));
}

}  // namespace
