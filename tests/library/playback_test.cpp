// Playback from the chosen GIF to the pixels on the screen.

#include <gtest/gtest.h>

#include "platform/messaging_center.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using namespace std::chrono_literals;

constexpr auto shouldPause = "kLWGIFViewShouldPauseNotification";
constexpr auto shouldResume = "kLWGIFViewShouldResumeNotification";

// At 64 refreshes a second these delays are whole numbers of refreshes: 16, 32 and 16.
const Bytes threeFrames = makeGif({{red, 25}, {green, 50}, {blue, 25}}, 39, 75);
constexpr StageOptions exactRefresh{.refreshRate = 64};

// A point inside the animated image that no icon covers.
constexpr int pictureX = 10;
constexpr int pictureY = 400;

void send(Stage& stage, const char* message) {
  platform::CPDistributedMessagingCenter::centerNamed("com.brightfen.lumora.gifview.SHARED")
      ->sendMessageName(message);
  stage.settle();
}

TEST(Playback, ShowsEachFrameAtItsComputedTime) {
  Stage stage(exactRefresh);
  stage.launch();
  const Color still = stage.colorAt(pictureX, pictureY);
  stage.choose("SHARED", threeFrames);
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  stage.refresh(15);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), still);
  stage.refresh();
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), red);
  stage.refresh(31);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), red);
  stage.refresh();
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), green);
  stage.refresh(16);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), blue);
  // The refresh of the wrap is one of frame 0's sixteen.
  stage.refresh(15);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 2);
  stage.refresh();
  EXPECT_EQ(Stage::shownFrame("SHARED"), 0);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), red);
}

TEST(Playback, KeepsItsFrameAndTimeThroughAPause) {
  Stage stage(exactRefresh);
  stage.launch();
  stage.choose("SHARED", threeFrames);
  stage.refresh(16 + 30);
  send(stage, shouldPause);
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
  stage.advance(10s);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), red);
  send(stage, shouldResume);
  stage.refresh();
  EXPECT_EQ(Stage::shownFrame("SHARED"), 0);
  stage.refresh();
  EXPECT_EQ(Stage::shownFrame("SHARED"), 1);
}

TEST(Playback, PausesOnlyOneLinkAfterTwoQuickResumes) {
  Stage stage(exactRefresh);
  stage.launch();
  stage.choose("SHARED", threeFrames);
  send(stage, shouldPause);
  Stage::view("SHARED")->resumeAnimation();
  Stage::view("SHARED")->resumeAnimation();
  stage.settle();
  // At double speed, because both links count each refresh.
  stage.refresh(8);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 0);
  send(stage, shouldPause);
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
  stage.refresh(32);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 1);
  // At the end of the cycle the leftover link is replaced by one that a pause can stop.
  stage.refresh(17);
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
}

TEST(Playback, FollowsTheLastOfManyQuickMessages) {
  Stage stage(exactRefresh);
  stage.launch();
  stage.choose("SHARED", threeFrames);
  const auto center =
      platform::CPDistributedMessagingCenter::centerNamed("com.brightfen.lumora.gifview.SHARED");
  for (int each = 0; each < 20; ++each) {
    center->sendMessageName(shouldResume);
    center->sendMessageName(shouldPause);
  }
  stage.settle();
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
}

TEST(Playback, AcceptsAPauseBetweenTwoCycles) {
  Stage stage(exactRefresh);
  stage.launch();
  stage.choose("SHARED", makeGif({{red, 25}}));
  stage.refresh(15);
  stage.refreshBeforeMessage(shouldPause);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 0);
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
  stage.refresh(40);
  EXPECT_EQ(Stage::described("SHARED", lumora::description::framesShown), 1);
}

TEST(Playback, AppliesTheSpeedFromTheNextRefresh) {
  Stage stage(exactRefresh);
  Stage::put("SHARED_GIF_SPEED", "2");
  stage.launch();
  stage.choose("SHARED", threeFrames);
  stage.refresh(8);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 0);
  Stage::put("SHARED_GIF_SPEED", "0");
  stage.post(lumora::speedNeedsUpdatingNotification);
  stage.advance(5s);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 0);
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  Stage::put("SHARED_GIF_SPEED", "1");
  stage.post(lumora::speedNeedsUpdatingNotification);
  stage.refresh();
  EXPECT_EQ(Stage::shownFrame("SHARED"), 1);
}

TEST(Playback, AppliesTheOpacityToTheImageViewOnly) {
  Stage stage(exactRefresh);
  Stage::put("SHARED_GIF_ALPHA", "0.5");
  stage.springBoard().setBackdrop(*host::parsedBackdrop("still"));
  stage.launch();
  const Color still = stage.colorAt(pictureX, pictureY);
  stage.choose("SHARED", threeFrames);
  stage.refresh(16);
  const Color mixed = stage.colorAt(pictureX, pictureY);
  EXPECT_NEAR(mixed[0], (still[0] + 255) / 2.0, 2);
  EXPECT_NEAR(mixed[1], still[1] / 2.0, 2);
  Stage::put("SHARED_GIF_ALPHA", "0");
  stage.post(lumora::alphaNeedsUpdatingNotification);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), still);
  EXPECT_EQ(Stage::view("SHARED")->alpha(), 1);
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
}

TEST(Playback, ClipsAFillingImageToItsView) {
  Stage stage(exactRefresh);
  Stage::put("SHARED_SCALING_MODE", "FILL");
  stage.springBoard().setBackdrop(*host::parsedBackdrop("still"));
  stage.launch();
  const Color besideTheDock = stage.colorAt(2, 840);
  stage.choose("SHARED", makeGif({{red, 25}}, 39, 300));
  stage.refresh(16);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), red);
  EXPECT_EQ(stage.colorAt(2, 840), besideTheDock);
}

TEST(Playback, RewritesEveryFrameWhenTheBlurChanges) {
  Stage stage(exactRefresh);
  stage.launch();
  stage.choose("SHARED", threeFrames);
  stage.takePosted();
  Stage::put("SHARED_GIF_BLUR", "5");
  stage.post(lumora::blurNeedsUpdatingNotification);
  EXPECT_EQ(stage.takePosted(),
            (std::vector<std::string>{
                lumora::frameFoundNotification, lumora::frameFoundNotification,
                lumora::frameFoundNotification, lumora::blurDidFinishNotification}));
  stage.refresh(16);
  // The blurred edge is translucent and shows the still wallpaper.
  EXPECT_NE(stage.colorAt(1, pictureY), red);
}

TEST(Playback, ContinuesPastAMissingFrame) {
  Stage stage(exactRefresh);
  stage.launch();
  const Color still = stage.colorAt(pictureX, pictureY);
  stage.choose("SHARED", threeFrames);
  std::filesystem::remove(
      stage.root("/var/mobile/Library/Lumora/Wallpaper_both/Wallpaper_both_1.png"));
  stage.refresh(16 + 32);
  EXPECT_EQ(Stage::shownFrame("SHARED"), 1);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), still);
  stage.refresh(16);
  EXPECT_EQ(stage.colorAt(pictureX, pictureY), blue);
}

TEST(Playback, GivesOtherViewsDefaultsAndTheirOwnCenter) {
  Stage stage(exactRefresh);
  Stage::put("SHARED_GIF_SPEED", "3");
  Stage::put("SHARED_GIF_ALPHA", "0.1");
  stage.launch();
  const auto view = stage.makeView("ELSEWHERE");
  EXPECT_EQ(view->imageView()->alpha(), 1);
  auto center =
      platform::CPDistributedMessagingCenter::centerNamed("com.brightfen.lumora.gifview.ELSEWHERE");
  EXPECT_TRUE(center->doesServerExist());
  center->sendMessageName(shouldResume);
  stage.settle();
  stage.refresh();
  // Without a list of delays every refresh shows a frame and ends a cycle.
  stage.refresh(3);
  EXPECT_EQ(Stage::described(*view, lumora::description::speed), 1);
  EXPECT_EQ(Stage::described(*view, lumora::description::frameShown), 3);
  view->pauseAnimation();
}

TEST(Playback, DoesNotMultiplyLeftoverLinks) {
  Stage stage(exactRefresh);
  stage.launch();
  const auto view = stage.makeView("ELSEWHERE");
  for (int each = 0; each < 3; ++each) view->resumeAnimation();
  stage.settle();
  stage.refresh(12);
  // One link is replaced at every refresh; the other two remain.
  EXPECT_LT(Stage::described(*view, lumora::description::frameShown), 3 * 12);
  view->pauseAnimation();
}

TEST(Playback, ContinuesThroughHundredsOfNotifications) {
  Stage stage(exactRefresh);
  stage.launch();
  stage.choose("SHARED", threeFrames);
  for (int each = 0; each < 200; ++each) {
    platform::DarwinNotifyCenter::post(each % 2 ? "com.brightfen.lumora.updateAnimating"
                                                : "com.brightfen.lumora.updateWallpaper");
  }
  stage.settle();
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
}

}  // namespace
