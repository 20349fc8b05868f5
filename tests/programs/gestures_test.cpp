#include <chrono>
#include <optional>

#include <gtest/gtest.h>

#include "host/artwork/apps.h"
#include "host/artwork/home_icons.h"
#include "host/home_screen/gesture_recognizer.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using artwork::Point;
using Kind = host::Gesture::Kind;
using std::chrono::milliseconds;

// Returns what a finger does that goes by way of a point.
std::optional<Kind> gesture(Point start, Point by, Point end, int time) {
  host::GestureRecognizer recognizer;
  recognizer.press(start, milliseconds(1000));
  recognizer.move(by);
  const auto found = recognizer.release(end, milliseconds(1000 + time));
  return found ? std::optional(found->kind) : std::nullopt;
}

TEST(Gesture, IsRecognizedByLengthDirectionAndTime) {
  constexpr Point start{100, 300};
  constexpr Point up{110, 200};
  constexpr Point littleUp{100, 260};
  EXPECT_EQ(gesture(start, start, {103, 304}, 300), Kind::Tap);
  EXPECT_EQ(gesture(start, start, start, 900), std::nullopt) << "held too long";
  EXPECT_EQ(gesture(start, up, start, 300), std::nullopt) << "came back";
  EXPECT_EQ(gesture(start, up, up, 900), Kind::SwipeUp);
  EXPECT_EQ(gesture(up, start, start, 900), Kind::SwipeDown);
  EXPECT_EQ(gesture(start, littleUp, littleUp, 900), std::nullopt) << "too short";
  EXPECT_EQ(gesture(start, littleUp, littleUp, 100), Kind::SwipeUp) << "short but fast";
  EXPECT_EQ(gesture(start, {300, 200}, {300, 200}, 100), std::nullopt) << "sideways";
  host::GestureRecognizer recognizer;
  EXPECT_FALSE(recognizer.release(start, milliseconds(0))) << "without a press";
}

TEST(HomeScreen, FindsTheIconUnderAFinger) {
  Stage stage;
  stage.launch();
  const auto& screen = stage.springBoard().screen();
  const auto nameAt = [&screen](Point point) {
    const artwork::App* app = screen.appAt(point);
    return app == nullptr ? "" : app->name;
  };
  EXPECT_STREQ(nameAt({64, 96}), "Music");
  EXPECT_STREQ(nameAt({64, 796}), "Phone");
  EXPECT_STREQ(nameAt({326, 796}), "Chat");
  EXPECT_STREQ(nameAt({195, 700}), "");
  stage.rotate(platform::UIInterfaceOrientation::LandscapeLeft);
  EXPECT_STREQ(nameAt({796, 75}), "Phone");
  EXPECT_STREQ(nameAt({64, 796}), "");
}

TEST(HomeScreen, ShowsEveryAppOnSmallScreens) {
  // Beside the dock of a small phone on its side, and of a tiny one.
  for (const artwork::Size area : {artwork::Size{472, 292}, {224, 150}, {120, 90}}) {
    const auto icons = artwork::homeIcons(area, host::Idiom::Phone);
    EXPECT_EQ(icons.size(), artwork::gridApps(host::Idiom::Phone).size());
    for (const auto& icon : icons) {
      const artwork::Rect& plate = icon.plate;
      EXPECT_EQ(artwork::appAt(icons, {plate.x + plate.width / 2, plate.y + plate.height / 2}),
                icon.app);
      EXPECT_LE(plate.x + plate.width, area.width) << icon.app->name;
      EXPECT_LE(plate.y + plate.height, area.height) << icon.app->name;
    }
  }
}

}  // namespace
