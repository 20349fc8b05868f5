#include "gifview/frame_cache.h"

#include <algorithm>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "gifview/gif_frame_delay.h"
#include "gifview/notification_names.h"
#include "platform/linux/file_contents.h"
#include "platform/linux/png.h"
#include "platform/operation_queue.h"
#include "platform/property_list.h"
#include "tests/stage.h"

namespace {

using namespace testing_stage;
using lumora::didStartAnimatingNotification;
using lumora::frameFoundNotification;

const std::string gifPath = "/var/mobile/Library/Lumora/Wallpaper_both.gif";
const std::string cache = "/var/mobile/Library/Lumora/Wallpaper_both";

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> storedDurations() {
  return platform::arrayWithContentsOfFile(cache + "/Wallpaper_both_durations.plist")
      .value_or(std::vector<std::string>{"none"});
}

Color frameColor(int index) {
  const auto image = platform::imageWithContentsOfFile(cache + "/Wallpaper_both_" +
                                                       std::to_string(index) + ".png");
  if (!image) return {1, 2, 3};
  const auto pixel = pixelAt(*image, 0, 0);
  return {pixel[0], pixel[1], pixel[2]};
}

// A view is made and started as an installation does it: not on the main thread.
void startInBackground(Stage& stage, const std::string& identifier, const std::string& path) {
  platform::NSOperationQueue().addOperationWithBlock([identifier, path] {
    static auto* views = new std::map<std::string, std::shared_ptr<lumora::LWGIFView>>;
    auto& view = (*views)[identifier];
    if (!view) view = lumora::LWGIFView::initWithIdentifier(identifier);
    view->startAnimationWithGIFAtPath(path);
  });
  stage.settle();
}

TEST(FrameCache, HoldsTheGifItsFramesAndTheirDelays) {
  Stage stage;
  const Bytes gif = makeGif({{red, 25}, {green, 2}, {blue, 1}, {white, 0}, {red, std::nullopt}});
  stage.root.write(gifPath, gif);
  stage.root.write(cache + "/left over", std::string("from an older GIF"));
  stage.launch();
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(
      filesIn(stage.root(cache)),
      (std::vector<std::string>{"Wallpaper_both", "Wallpaper_both_0.png", "Wallpaper_both_1.png",
                                "Wallpaper_both_2.png", "Wallpaper_both_3.png",
                                "Wallpaper_both_4.png", "Wallpaper_both_durations.plist"}));
  EXPECT_EQ(platform::contentsOfFile(cache + "/Wallpaper_both"), gif);
  EXPECT_EQ(storedDurations(),
            (std::vector<std::string>{"0.250000", "0.020000", "0.100000", "0.100000", "0.100000"}));
  EXPECT_EQ(frameColor(0), red);
  EXPECT_EQ(frameColor(2), blue);
  EXPECT_EQ(frameColor(4), red);
  EXPECT_EQ(stage.takePosted(),
            (std::vector<std::string>{frameFoundNotification, frameFoundNotification,
                                      frameFoundNotification, frameFoundNotification,
                                      frameFoundNotification, didStartAnimatingNotification}));
}

TEST(FrameCache, IsKeptForTheSameBytesAndRebuiltForOthers) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}, {green}}));
  startInBackground(stage, "SHARED", gifPath);
  stage.root.write(cache + "/Wallpaper_both_0.png", std::string("touched"));
  stage.takePosted();

  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(platform::contentsOfFile(cache + "/Wallpaper_both_0.png")->size(), 7U);
  EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{didStartAnimatingNotification}));

  stage.root.write(gifPath, makeGif({{blue}}));
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(frameColor(0), blue);
  EXPECT_EQ(filesIn(stage.root(cache)).size(), 3U);
}

TEST(FrameCache, IsTrustedOnceTheSavedCopyIsThereEvenWithoutFrames) {
  Stage stage;
  stage.launch();
  const Bytes gif = makeGif({{red}});
  stage.root.write(gifPath, gif);
  stage.root.write(cache + "/Wallpaper_both", gif);
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(filesIn(stage.root(cache)), (std::vector<std::string>{"Wallpaper_both"}));
}

TEST(FrameCache, OnlyViewsOfTheModeInForceMakeOne) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}}));
  struct Case {
    const char* mode;
    const char* location;
    const char* identifier;
    bool isMade;
    bool isAnnouncedAgain;
  };
  const Case cases[] = {
      {"1", "0", "SHARED", true, true},      {"1", "0", "LOCKSCREEN", false, false},
      {"", "0", "SHARED", true, true},       {"0", "0", "SHARED", false, false},
      {"0", "0", "LOCKSCREEN", true, true},  {"0", "1", "LOCKSCREEN", true, false},
      {"0", "1", "HOMESCREEN", true, true},  {"0", "0", "HOMESCREEN", true, false},
      {"2", "0", "SHARED", false, false},    {"2", "0", "HOMESCREEN", false, false},
      {"1", "0", "SOMEWHERE", false, false}, {"0", "0", "SOMEWHERE", false, false},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(std::string(each.mode) + " " + each.location + " " + each.identifier);
    std::filesystem::remove_all(stage.root(cache));
    Stage::put("MODE_INDEX", each.mode);
    Stage::put("LOCATION_INDEX", each.location);
    stage.takePosted();
    startInBackground(stage, each.identifier, gifPath);
    EXPECT_EQ(stage.root.has(cache), each.isMade);
    EXPECT_EQ(stage.takePosted().size(), each.isMade ? 2U : 0U);
    // On a valid cache only the view that the settings program is looking at speaks.
    startInBackground(stage, each.identifier, gifPath);
    EXPECT_EQ(stage.takePosted().size(), each.isAnnouncedAgain ? 1U : 0U);
  }
}

TEST(FrameCache, OfSomethingThatIsNoPictureIsOnlyTheSavedCopyAndASignal) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}}));
  startInBackground(stage, "SHARED", gifPath);
  stage.root.write(gifPath, std::string("no picture"));
  stage.takePosted();
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(filesIn(stage.root(cache)), (std::vector<std::string>{"Wallpaper_both"}));
  EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{didStartAnimatingNotification}));
}

TEST(FrameCache, HoldsWhatThereIsOfAGifThatIsCutShort) {
  Stage stage;
  stage.launch();
  Bytes gif = makeGif({{red, 30}, {green, 40}, {blue, 50}}, 16, 16);
  // Of the last image's 256 indices, a byte each, with a clear code before every hundred.
  gif.resize(gif.size() - 200);
  stage.root.write(gifPath, gif);
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(storedDurations(), (std::vector<std::string>{"0.300000", "0.400000", "0.500000"}));
  const auto last = platform::imageWithContentsOfFile(cache + "/Wallpaper_both_2.png");
  EXPECT_EQ(pixelAt(*last, 15, 2), (platform::RGBAColor{0, 0, 255, 255}));
  EXPECT_EQ(pixelAt(*last, 0, 3), (platform::RGBAColor{0, 255, 0, 255}));
}

TEST(FrameCache, LeavesAGapInTheNumbersForAFrameThatCannotBeDecoded) {
  Stage stage;
  stage.launch();
  const Bytes first = makeGif({{red, 30}}, 16, 16);
  Bytes gif = makeGif({{red, 30}, {green, 40}, {blue, 50}}, 16, 16);
  // The code size of the second frame, behind its control block, descriptor and colours.
  constexpr std::size_t codeSizeAt = 8 + 10 + 6;
  gif[first.size() - 1 + codeSizeAt] = 13;
  stage.root.write(gifPath, gif);
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(storedDurations(), (std::vector<std::string>{"0.300000", "0.500000"}));
  EXPECT_EQ(frameColor(0), red);
  EXPECT_FALSE(stage.root.has(cache + "/Wallpaper_both_1.png"));
  EXPECT_EQ(frameColor(2), blue);
}

TEST(FrameCache, AnUnreadableGifKeepsTheCallerWaitingItsFiveSecondsAndChangesNothing) {
  Stage stage;
  stage.launch();
  std::filesystem::create_directories(stage.root(gifPath));
  const auto start = std::chrono::steady_clock::now();
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4900));
  EXPECT_TRUE(stage.takePosted().empty());
  EXPECT_FALSE(stage.root.has(cache));
}

TEST(FrameCache, BlursEachFrameByTheSettingOfTheViewsLocation) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}}, 8, 8));
  Stage::put("LOCKSCREEN_GIF_BLUR", "3");
  startInBackground(stage, "SHARED", gifPath);
  const std::string frame = cache + "/Wallpaper_both_0.png";
  EXPECT_EQ(pixelAt(*platform::imageWithContentsOfFile(frame), 0, 0)[3], 255);

  for (const auto& [setting, isBlurred] :
       {std::pair("0.9", false), std::pair("3.9", true), std::pair("-3", false)}) {
    SCOPED_TRACE(setting);
    std::filesystem::remove_all(stage.root(cache));
    Stage::put("SHARED_GIF_BLUR", setting);
    startInBackground(stage, "SHARED", gifPath);
    const auto image = platform::imageWithContentsOfFile(frame);
    EXPECT_EQ(image->width(), 8);
    EXPECT_EQ(image->height(), 8);
    // What lies outside the picture is transparent and bleeds into a blurred corner.
    EXPECT_EQ(pixelAt(*image, 0, 0)[3] < 200, isBlurred);
  }
}

TEST(FrameCache, ReadsTheBlurAfreshForEveryFrame) {
  Stage stage;
  stage.launch();
  Stage::put("MODE_INDEX", "1");
  auto readsFor = [&stage](const Bytes& gif) {
    stage.root.write(gifPath, gif);
    SettingsWatch watch(stage.root);
    startInBackground(stage, "SHARED", gifPath);
    return watch.take().reads;
  };
  readsFor(makeGif({{blue}}));
  const int one = readsFor(makeGif({{red}}));
  EXPECT_EQ(readsFor(makeGif({{red}, {red}, {red}, {red}})), one + 3);
}

TEST(FrameCache, SurvivesOverlappingStartsOfOneView) {
  Stage stage;
  stage.launch();
  startInBackground(stage, "SHARED", gifPath);
  stage.root.write(gifPath, makeGif(std::vector<Frame>(40, Frame{green, 5}), 64, 64));
  stage.post("com.brightfen.lumora.updateWallpaper");
  for (int each = 0; each < 4; ++each) {
    stage.root.write(gifPath, makeGif(std::vector<Frame>(40, Frame{red, 5 + each}), 64, 64));
    platform::NSOperationQueue().addOperationWithBlock(
        [] { Stage::view("SHARED")->startAnimationWithGIFAtPath(gifPath); });
  }
  stage.settle();
  // Nothing serialises them, so what they leave may be incomplete; the next GIF's cache is not.
  stage.root.write(gifPath, makeGif({{blue, 20}, {red, 30}}));
  startInBackground(stage, "SHARED", gifPath);
  EXPECT_EQ(storedDurations(), (std::vector<std::string>{"0.200000", "0.300000"}));
}

}  // namespace
