// Settings that apply to a wallpaper while it is shown: blur, scaling and mode.

#include "gifview/live_settings.h"

#include <algorithm>
#include <optional>

#include <gtest/gtest.h>

#include "platform/file_manager.h"
#include "platform/image.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/operation_queue.h"
#include "settings/device_paths.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;

constexpr auto alphaNeedsUpdating = "kLWGIFViewGIFAlphaNeedsUpdating";
constexpr auto blurNeedsUpdating = "kLWGIFViewGIFBlurNeedsUpdating";
constexpr auto frameFound = "kLWGIFViewFrameFoundNotification";
constexpr auto blurDidFinish = "kLWGIFViewGIFBlurDidFinish";
constexpr auto savedCopy = "/var/mobile/Library/Lumora/Wallpaper_both/Wallpaper_both";
constexpr auto firstFrame = "/var/mobile/Library/Lumora/Wallpaper_both/Wallpaper_both_0.png";

const Bytes twoFrames = makeGif({{red}, {green}}, 12, 12);

long countOf(const std::vector<std::string>& posted, const char* name) {
  return std::count(posted.begin(), posted.end(), name);
}

Bytes framePixels() {
  const auto image = platform::imageWithContentsOfFile(firstFrame);
  return image ? platform::backend::pixelsOf(*image) : Bytes();
}

struct WithWallpaper : Stage {
  WithWallpaper() {
    launch();
    choose("SHARED", twoFrames);
    takePosted();
  }

  // Stores the setting, damages the first frame, runs a blur, and returns that frame.
  Bytes blurredFrame(const std::string& setting) {
    put("SHARED_GIF_BLUR", setting);
    root.write(firstFrame, std::string("damaged"));
    post(blurNeedsUpdating);
    return framePixels();
  }
};

TEST(LiveSettings, RewritesFramesForEveryBlurSetting) {
  WithWallpaper stage;
  const auto sharp = framePixels();
  EXPECT_EQ(stage.blurredFrame("0"), sharp);
  EXPECT_EQ(stage.blurredFrame("-3"), sharp);
  EXPECT_EQ(stage.blurredFrame("0.9"), sharp);
  const auto blurred = stage.blurredFrame("3");
  EXPECT_NE(blurred, sharp);
  EXPECT_EQ(stage.blurredFrame("3.9"), blurred);
  EXPECT_NE(stage.blurredFrame("40"), blurred);
  EXPECT_EQ(platform::imageWithContentsOfFile(firstFrame)->width(), 12);
}

TEST(LiveSettings, BlursTheChosenGifAfterOneSettingsRead) {
  WithWallpaper stage;
  stage.root.write(savedCopy, std::string("no picture"));
  SettingsWatch watch(stage.root);
  stage.post(blurNeedsUpdating);
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{1, 0}));
  const auto posted = stage.takePosted();
  EXPECT_EQ(countOf(posted, frameFound), 2);
  EXPECT_EQ(countOf(posted, blurDidFinish), 1);
}

TEST(LiveSettings, AnnouncesTheEndOfABlurThatFails) {
  WithWallpaper stage;
  const auto before = framePixels();
  for (const char* damage : {"no picture", ""}) {
    stage.root.write(lumora::sharedGIFPath, std::string(damage));
    stage.post(blurNeedsUpdating);
    EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{blurDidFinish}));
  }
  platform::removeItemAtPath(lumora::sharedGIFPath);
  stage.post(blurNeedsUpdating);
  EXPECT_EQ(stage.takePosted(), (std::vector<std::string>{blurDidFinish}));
  EXPECT_EQ(framePixels(), before);
}

TEST(LiveSettings, IgnoresBlurChangesWithoutAGif) {
  Stage stage;
  stage.launch();
  const auto view = stage.makeView("SHARED");
  stage.post(blurNeedsUpdating);
  EXPECT_EQ(stage.takePosted(), std::vector<std::string>());
}

TEST(LiveSettings, RunsTwoBlursConcurrently) {
  WithWallpaper stage;
  Stage::put("SHARED_GIF_BLUR", "3");
  lumora::updateGIFBlur(Stage::view("SHARED"));
  lumora::updateGIFBlur(Stage::view("SHARED"));
  stage.settle();
  const auto posted = stage.takePosted();
  EXPECT_EQ(countOf(posted, frameFound), 4);
  EXPECT_EQ(countOf(posted, blurDidFinish), 2);
  const auto twice = framePixels();
  EXPECT_EQ(stage.blurredFrame("3"), twice);
}

TEST(LiveSettings, FollowsTheSettingsOfTheViewsLocation) {
  Stage stage;
  stage.launch();
  const std::string identifiers[] = {"SHARED", "LOCKSCREEN", "HOMESCREEN"};
  std::vector<std::shared_ptr<lumora::LWGIFView>> views;
  for (const int round : {0, 1}) {
    for (int each = 0; each < 3; ++each) {
      Stage::put(identifiers[each] + "_GIF_SPEED", std::to_string(3 * round + each + 2));
      Stage::put(identifiers[each] + "_GIF_ALPHA", "0." + std::to_string(3 * round + each + 2));
    }
    // Existing views follow notifications.
    if (round == 0) {
      for (const std::string& each : identifiers) views.push_back(stage.makeView(each));
    } else {
      stage.post(alphaNeedsUpdating);
      stage.post("kLWGIFViewGIFSpeedNeedsUpdating");
    }
    for (int each = 0; each < 3; ++each) {
      EXPECT_EQ(Stage::described(*views[each], lumora::description::speed), 3 * round + each + 2);
      EXPECT_NEAR(views[each]->imageView()->alpha(), (3 * round + each + 2) / 10.0, 1e-6);
    }
  }
  const auto elsewhere = stage.makeView("ELSEWHERE");
  elsewhere->imageView()->setAlpha(0);
  stage.post(alphaNeedsUpdating);
  EXPECT_EQ(elsewhere->imageView()->alpha(), 1);
}

TEST(LiveSettings, AppliesScalingModesToTheImageViewOnly) {
  Stage stage;
  stage.launch();
  const auto view = stage.makeView("SHARED");
  using Mode = platform::UIViewContentMode;
  const Mode before = view->contentMode();
  for (const Mode mode : {Mode::ScaleToFill, Mode::ScaleAspectFit, Mode::ScaleAspectFill}) {
    platform::NSOperationQueue().addOperationWithBlock([&] { view->setContentMode(mode); });
    stage.settle();
    EXPECT_EQ(view->imageView()->contentMode(), mode);
    EXPECT_EQ(view->contentMode(), before);
  }
}

TEST(LiveSettings, RemovesViewsThatTheModeDoesNotUse) {
  struct Case {
    std::optional<std::string> mode;
    bool sharedLeaves;
    bool othersLeave;
  };
  const Case cases[] = {{"0", true, false},   {"1", false, true}, {"2", false, false},
                        {"-1", false, false}, {"", false, true},  {std::nullopt, false, true}};
  Stage stage;
  stage.launch();
  const auto parent = std::make_shared<platform::UIView>();
  for (const char* identifier : {"SHARED", "LOCKSCREEN", "HOMESCREEN", "ELSEWHERE"}) {
    const auto view = stage.makeView(identifier);
    for (const Case& each : cases) {
      SCOPED_TRACE(std::string(identifier) + " in mode " + each.mode.value_or("of no file"));
      platform::removeItemAtPath(lumora::settingsPath);
      if (each.mode) Stage::put("MODE_INDEX", *each.mode);
      parent->addSubview(view);
      lumora::removeUnneededViews(view);
      stage.settle();
      const bool leaves =
          identifier == std::string("SHARED") ? each.sharedLeaves : each.othersLeave;
      EXPECT_EQ(view->superview() == nullptr, leaves);
      EXPECT_EQ(Stage::stored(std::string(identifier) + "_WALLPAPER_SET"),
                leaves ? std::optional<std::string>("FALSE") : std::nullopt);
    }
  }
}

}  // namespace
