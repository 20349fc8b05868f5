#include "gifview/frame_cache.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <time.h>

#include "gifview/gif_frame_delay.h"
#include "platform/file_manager.h"
#include "platform/linux/files/file_contents.h"
#include "platform/linux/images/png/reader.h"
#include "platform/operation_queue.h"
#include "platform/property_list.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using lumora::didStartAnimatingNotification;
using lumora::frameFoundNotification;

const std::string gifPath = lumora::sharedGIFPath;
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

using View = std::shared_ptr<lumora::LWGIFView>;

void start(Stage& stage, const View& view) {
  platform::NSOperationQueue().addOperationWithBlock(
      [view] { view->startAnimationWithGIFAtPath(gifPath); });
  stage.settle();
}

// Starts the view and returns the calling thread's share of the CPU time that the call takes.
double shareOfStartingThread(Stage& stage, const View& view) {
  auto now = [](clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  };
  double own = 0;
  double all = 0;
  platform::NSOperationQueue().addOperationWithBlock([&] {
    const double before = now(CLOCK_THREAD_CPUTIME_ID);
    const double allBefore = now(CLOCK_PROCESS_CPUTIME_ID);
    view->startAnimationWithGIFAtPath(gifPath);
    own = now(CLOCK_THREAD_CPUTIME_ID) - before;
    all = now(CLOCK_PROCESS_CPUTIME_ID) - allBefore;
  });
  stage.settle();
  return own / all;
}

TEST(FrameCache, StoresTheGifItsFramesAndTheirDelays) {
  Stage stage;
  const Bytes gif = makeGif({{red, 25}, {green, 2}, {blue, 1}, {white, 0}, {red, std::nullopt}});
  stage.root.write(gifPath, gif);
  stage.root.write(cache + "/left over", std::string("from an older GIF"));
  stage.launch();
  const auto view = stage.makeView("SHARED");
  start(stage, view);
  EXPECT_EQ(
      filesIn(stage.root(cache)),
      (std::vector<std::string>{"Wallpaper_both", "Wallpaper_both_0.png", "Wallpaper_both_1.png",
                                "Wallpaper_both_2.png", "Wallpaper_both_3.png",
                                "Wallpaper_both_4.png", "Wallpaper_both_durations.plist"}));
  EXPECT_EQ(platform::backend::contentsOfFile(cache + "/Wallpaper_both"), gif);
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

TEST(FrameCache, IsRebuiltOnlyIfTheGifChanges) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}, {green}}));
  start(stage, stage.makeView("SHARED"));
  stage.root.write(cache + "/Wallpaper_both_0.png", std::string("touched"));
  stage.takePosted();

  // As after a restart: a new view loads everything from the cache.
  const auto view = stage.makeView("SHARED");
  start(stage, view);
  EXPECT_EQ(platform::backend::contentsOfFile(cache + "/Wallpaper_both_0.png")->size(), 7U);
  EXPECT_EQ(Stage::described(*view, lumora::description::framesInCache), 2);
  EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{didStartAnimatingNotification}));

  // Another GIF of the same length.
  stage.root.write(gifPath, makeGif({{blue}, {green}}));
  start(stage, view);
  EXPECT_EQ(frameColor(0), blue);
  EXPECT_EQ(filesIn(stage.root(cache)).size(), 4U);
}

TEST(FrameCache, IsValidIfTheSavedCopyMatches) {
  Stage stage;
  stage.launch();
  const Bytes gif = makeGif({{red}});
  stage.root.write(gifPath, gif);
  stage.root.write(cache + "/Wallpaper_both", gif);
  start(stage, stage.makeView("SHARED"));
  EXPECT_EQ(filesIn(stage.root(cache)), (std::vector<std::string>{"Wallpaper_both"}));
}

TEST(FrameCache, IsBuiltOnlyByViewsOfTheCurrentMode) {
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
    const auto view = stage.makeView(each.identifier);
    start(stage, view);
    EXPECT_EQ(stage.root.has(cache), each.isMade);
    EXPECT_EQ(stage.takePosted().size(), each.isMade ? 2U : 0U);
    // With a valid cache only the view of the selected location posts a notification.
    start(stage, view);
    EXPECT_EQ(stage.takePosted().size(), each.isAnnouncedAgain ? 1U : 0U);
  }
}

TEST(FrameCache, KeepsOnlyTheSavedCopyOfAFileThatIsNotAnImage) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}}));
  const auto view = stage.makeView("SHARED");
  start(stage, view);
  stage.root.write(gifPath, std::string("no picture"));
  stage.takePosted();
  start(stage, view);
  EXPECT_EQ(Stage::described(*view, lumora::description::framesInCache), 0);
  EXPECT_EQ(Stage::described(*view, lumora::description::frameCount), 0);
  EXPECT_EQ(filesIn(stage.root(cache)), (std::vector<std::string>{"Wallpaper_both"}));
  EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{didStartAnimatingNotification}));
}

TEST(FrameCache, StoresWhatATruncatedGifContains) {
  Stage stage;
  stage.launch();
  Bytes gif = makeGif({{red, 30}, {green, 40}, {blue, 50}}, 16, 16);
  // The last image has 256 indices of a byte each, with a clear code before every hundred.
  gif.resize(gif.size() - 200);
  stage.root.write(gifPath, gif);
  start(stage, stage.makeView("SHARED"));
  EXPECT_EQ(storedDurations(), (std::vector<std::string>{"0.300000", "0.400000", "0.500000"}));
  const auto last = platform::imageWithContentsOfFile(cache + "/Wallpaper_both_2.png");
  EXPECT_EQ(pixelAt(*last, 15, 2), (platform::backend::RGBAColor{0, 0, 255, 255}));
  EXPECT_EQ(pixelAt(*last, 0, 3), (platform::backend::RGBAColor{0, 255, 0, 255}));
}

TEST(FrameCache, SkipsTheNumberOfAnUndecodableFrame) {
  Stage stage;
  stage.launch();
  const Bytes first = makeGif({{red, 30}}, 16, 16);
  Bytes gif = makeGif({{red, 30}, {green, 40}, {blue, 50}}, 16, 16);
  // The second frame's code size follows its control block, descriptor and color table.
  constexpr std::size_t codeSizeAt = 8 + 10 + 6;
  gif[first.size() - 1 + codeSizeAt] = 13;
  stage.root.write(gifPath, gif);
  const auto view = stage.makeView("SHARED");
  start(stage, view);
  EXPECT_EQ(storedDurations(), (std::vector<std::string>{"0.300000", "0.500000"}));
  // A blur keeps the frame numbers.
  for (const bool isRewritten : {false, true}) {
    if (isRewritten) stage.post(lumora::blurNeedsUpdatingNotification);
    const auto posted = stage.takePosted();
    EXPECT_EQ(std::count(posted.begin(), posted.end(), frameFoundNotification), 2);
    EXPECT_EQ(frameColor(0), red);
    EXPECT_FALSE(stage.root.has(cache + "/Wallpaper_both_1.png"));
    EXPECT_EQ(frameColor(2), blue);
  }
}

TEST(FrameCache, IsBuiltOnBackgroundThreads) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif(std::vector<Frame>(40), 100, 100));
  EXPECT_LT(shareOfStartingThread(stage, stage.makeView("SHARED")), 0.5);
}

TEST(FrameCache, WritesTheSavedCopyFirstAndTheDelaysLast) {
  Stage stage;
  stage.launch();
  // Large enough that the files get different times.
  stage.root.write(gifPath, makeGif({{red}, {green}}, 2000, 2000));
  start(stage, stage.makeView("SHARED"));
  const auto writtenAt = [&](const std::string& suffix) {
    return std::filesystem::last_write_time(stage.root(cache + "/Wallpaper_both" + suffix));
  };
  EXPECT_LT(writtenAt(""), writtenAt("_1.png"));
  EXPECT_LT(writtenAt("_0.png"), writtenAt("_durations.plist"));
}

TEST(FrameDelay, PrefersAPositiveUnclampedDelay) {
  using platform::GIFProperties;
  const std::pair<GIFProperties, double> cases[] = {
      {{std::nullopt, 0.5}, 0.1}, {{0, 0.5}, 0.5},  {{-1, 0.5}, 0.5},    {{0, std::nullopt}, 0.1},
      {{0.3, 0.5}, 0.3},          {{0, 0.01}, 0.1}, {{0.02, 0.5}, 0.02}, {{0.0199, 0.5}, 0.1},
  };
  for (const auto& [gif, delay] : cases) {
    EXPECT_EQ(lumora::gifFrameDelay(platform::ImageProperties{gif}), delay);
  }
  EXPECT_EQ(lumora::gifFrameDelay(platform::ImageProperties()), 0.1);
  EXPECT_EQ(lumora::gifFrameDelay(std::nullopt), 0.1);
}

TEST(FrameCache, GivesUpOnUnreadableGifsAfterFiveSeconds) {
  Stage stage;
  stage.launch();
  std::filesystem::create_directories(stage.root(gifPath));
  const auto begin = std::chrono::steady_clock::now();
  const auto view = stage.makeView("SHARED");
  start(stage, view);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(4900));
  EXPECT_EQ(view->frameCache().fullGIFPath, gifPath);
  EXPECT_TRUE(stage.takePosted().empty());
  EXPECT_FALSE(stage.root.has(cache));
}

TEST(FrameCache, BlursFramesByTheSettingOfTheirLocation) {
  Stage stage;
  stage.launch();
  stage.root.write(gifPath, makeGif({{red}}, 8, 8));
  const char* const identifiers[] = {"SHARED", "LOCKSCREEN", "HOMESCREEN"};
  auto put = [&](const std::string& own, const char* setting) {
    for (const std::string each : identifiers) {
      Stage::put(each + "_GIF_BLUR", each == own ? setting : std::stoi(setting) > 0 ? "0" : "3");
    }
  };
  auto isBlurred = [] {
    const auto image = platform::imageWithContentsOfFile(cache + "/Wallpaper_both_0.png");
    EXPECT_EQ(image->width(), 8);
    EXPECT_EQ(image->height(), 8);
    // Everything outside the image is transparent, so a blurred corner becomes translucent.
    return pixelAt(*image, 0, 0)[3] < 200;
  };
  for (const char* identifier : identifiers) {
    Stage::put("MODE_INDEX", identifier == identifiers[0] ? "1" : "0");
    for (const auto& [setting, blurs] :
         {std::pair("0.9", false), std::pair("3.9", true), std::pair("-3", false)}) {
      SCOPED_TRACE(std::string(identifier) + " " + setting);
      std::filesystem::remove_all(stage.root(cache));
      put(identifier, setting);
      const auto view = stage.makeView(identifier);
      start(stage, view);
      EXPECT_EQ(isBlurred(), blurs);
      put(identifier, blurs ? "0" : "3");
      stage.post(lumora::blurNeedsUpdatingNotification);
      EXPECT_EQ(isBlurred(), !blurs);
    }
  }
}

TEST(FrameCache, ReadsTheBlurSettingForEveryFrame) {
  Stage stage;
  stage.launch();
  Stage::put("MODE_INDEX", "1");
  const auto view = stage.makeView("SHARED");
  auto readsFor = [&stage, &view](const Bytes& gif) {
    stage.root.write(gifPath, gif);
    SettingsWatch watch(stage.root);
    start(stage, view);
    return watch.take().reads;
  };
  readsFor(makeGif({{blue}}));
  const int one = readsFor(makeGif({{red}}));
  EXPECT_EQ(readsFor(makeGif({{red}, {red}, {red}, {red}})), one + 3);
}

TEST(FrameCache, SurvivesOverlappingStarts) {
  Stage stage;
  stage.launch();
  const auto view = stage.makeView("SHARED");
  for (int each = 0; each < 4; ++each) {
    stage.root.write(gifPath, makeGif(std::vector<Frame>(40, Frame{red, 5 + each}), 64, 64));
    platform::NSOperationQueue().addOperationWithBlock(
        [&view] { view->startAnimationWithGIFAtPath(gifPath); });
  }
  stage.settle();
  // They are not serialized, so their cache may be incomplete; the next GIF's cache is not.
  stage.root.write(gifPath, makeGif({{blue, 20}, {red, 30}}));
  start(stage, view);
  EXPECT_EQ(storedDurations(), (std::vector<std::string>{"0.200000", "0.300000"}));
}

}  // namespace
