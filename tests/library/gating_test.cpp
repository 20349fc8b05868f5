#include "placement/gating.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "hooks/wallpaper_view_dealloc.h"
#include "host/home_screen/wallpaper_controller.h"
#include "placement/view_slots.h"
#include "placement/wallpaper_listener.h"
#include "platform/linux/views/key_value_observing.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using namespace std::chrono_literals;
using lumora::LWWallpaperListener;

const Bytes gif = makeGif({{red}, {green}});

struct Playing : Stage {
  explicit Playing(StageOptions options = {}) : Stage(options) {
    launch();
    choose("SHARED", gif);
  }
};

TEST(Gating, PausesHiddenWallpapersAndResumesShownOnes) {
  Playing stage;
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  stage.hideWallpaper();
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
  stage.showWallpaper();
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  stage.springBoard().turnDisplay(false);
  stage.settle();
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
}

TEST(Gating, PlaysOnlyTheVisibleScreenInSeparateMode) {
  Stage stage;
  stage.launch();
  stage.choose("LOCKSCREEN", gif);
  stage.choose("HOMESCREEN", gif);
  stage.springBoard().lock();
  stage.settle();
  EXPECT_TRUE(Stage::isPlaying("LOCKSCREEN"));
  EXPECT_FALSE(Stage::isPlaying("HOMESCREEN"));
  stage.showWallpaper();
  EXPECT_FALSE(Stage::isPlaying("LOCKSCREEN"));
  EXPECT_TRUE(Stage::isPlaying("HOMESCREEN"));
}

TEST(Gating, PausesAWallpaperThatIsStartedWhileCovered) {
  Stage stage;
  stage.root.write(lumora::sharedGIFPath, gif);
  Stage::put("WALLPAPER_SET", "TRUE");
  stage.springBoard().setCovered(true);
  stage.launch();
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  stage.springBoard().reportVisibility();
  stage.settle();
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
  stage.springBoard().setCovered(false);
  stage.settle();
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
}

TEST(Gating, BringsTheHostViewToTheFront) {
  Playing stage;
  const auto host = Stage::hostView("SHARED");
  const auto cover = std::make_shared<platform::UIView>();
  for (const bool hides : {true, false}) {
    host->superview()->addSubview(cover);
    hides ? stage.hideWallpaper() : stage.showWallpaper();
    EXPECT_EQ(host->superview()->subviews().back(), host);
  }
}

TEST(Gating, IgnoresVisibilityWhileDisabled) {
  Playing stage;
  Stage::put("ENABLED", "FALSE");
  stage.hideWallpaper();
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  Stage::put("ENABLED", "");
  stage.showWallpaper();
  stage.hideWallpaper();
  EXPECT_FALSE(Stage::isPlaying("SHARED"));
}

TEST(Gating, ReinstallsDetachedViewsBeforePausingOrResuming) {
  Playing stage;
  for (const bool hides : {true, false}) {
    stage.post(lumora::control::removeGIFFromAllWallpapers);
    ASSERT_EQ(Stage::view("SHARED")->superview(), nullptr);
    hides ? stage.hideWallpaper() : stage.showWallpaper();
    EXPECT_NE(Stage::view("SHARED")->superview(), nullptr);
    EXPECT_EQ(Stage::isPlaying("SHARED"), !hides);
    EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
  }
}

TEST(Gating, IgnoresHostViewsWithAForeignTag) {
  Playing stage;
  Stage::hostView("SHARED")->setTag(5);
  stage.post(lumora::control::removeGIFFromAllWallpapers);
  stage.hideWallpaper();
  stage.showWallpaper();
  EXPECT_TRUE(Stage::isPlaying("SHARED"));
  EXPECT_EQ(Stage::view("SHARED")->superview(), nullptr);
}

TEST(Gating, ResumesVisibleWallpapersWithoutPausingOthers) {
  Stage stage;
  stage.launch();
  stage.choose("LOCKSCREEN", gif);
  stage.choose("HOMESCREEN", gif);
  // The mode does not matter, only which wallpapers the host shows.
  for (const char* mode : {"0", "1", "2"}) {
    Stage::put("MODE_INDEX", mode);
    for (const char* identifier : {"LOCKSCREEN", "HOMESCREEN"}) {
      Stage::view(identifier)->pauseAnimation();
    }
    lumora::resumeVisibleWallpapers();
    stage.settle();
    EXPECT_FALSE(Stage::isPlaying("LOCKSCREEN"));
    EXPECT_TRUE(Stage::isPlaying("HOMESCREEN"));
  }
  Stage::put("MODE_INDEX", "0");
  stage.hideWallpaper();
  Stage::view("LOCKSCREEN")->resumeAnimation();
  stage.post(lumora::control::updateAnimating);
  EXPECT_TRUE(Stage::isPlaying("LOCKSCREEN"));
  EXPECT_FALSE(Stage::isPlaying("HOMESCREEN"));
}

class StrangeObserver : public platform::KeyValueObserver {
 public:
  void observeValueForKeyPath(std::string_view /*keyPath*/, platform::UIView& /*object*/,
                              const void* /*context*/) override {
    ++calls;
  }
  int calls = 0;
};

TEST(Gating, LetsHostViewsDieWithAListenerAttached) {
  Playing stage;
  const std::weak_ptr<LWWallpaperListener> listener = lumora::sharedListener.load();
  const std::weak_ptr<platform::UIView> host = Stage::hostView("SHARED");
  ASSERT_EQ(platform::backend::observersOf(*host.lock()).size(), 1U);
  stage.choose("HOMESCREEN", gif);
  EXPECT_TRUE(host.expired());
  // The global still refers to it, because it was not removed from the view it is registered with.
  EXPECT_EQ(lumora::sharedListener.load(), listener.lock());
}

void (*hostDealloc)(platform::id, platform::SEL) = nullptr;
std::vector<std::size_t> observersLeft;

void countingDealloc(platform::id self, platform::SEL selector) {
  observersLeft.push_back(
      platform::backend::observersOf(*platform::UIView::viewOfObject(self)).size());
  hostDealloc(self, selector);
}

TEST(Gating, ChecksOnlyTheFirstObserverAtDealloc) {
  Stage stage;
  stage.launch();
  hostDealloc = std::exchange(lumora::previousWallpaperViewDealloc, countingDealloc);
  const auto cls = platform::objc_getClass("SBFWallpaperView");
  const auto foreign = std::make_shared<StrangeObserver>();
  for (const bool foreignIsFirst : {true, false}) {
    auto view = platform::backend::makeViewOfClass<platform::UIView>(cls);
    if (foreignIsFirst) view->addObserver(foreign, "hidden", nullptr);
    LWWallpaperListener::addListenerToObject(view, lumora::lockscreenListener);
    if (!foreignIsFirst) view->addObserver(foreign, "hidden", nullptr);
    view.reset();
  }
  platform::backend::makeViewOfClass<platform::UIView>(cls).reset();
  // If the first observer is foreign, both stay; a listener that comes first is removed.
  EXPECT_EQ(observersLeft, (std::vector<std::size_t>{2, 1, 0}));
  EXPECT_EQ(foreign->calls, 0);
}

TEST(Gating, ReplacesListenersOnTheSameObjectOnly) {
  Stage stage;
  stage.launch();
  const auto first = std::make_shared<platform::UIView>();
  const auto second = std::make_shared<platform::UIView>();
  auto listen = [](const std::shared_ptr<platform::UIView>& view) {
    LWWallpaperListener::addListenerToObject(view, lumora::homescreenListener);
    return lumora::homescreenListener.load();
  };
  listen(first);
  const auto onFirst = listen(first);
  EXPECT_EQ(platform::backend::observersOf(*first).size(), 1U);
  // Removal is attempted on the new object, so the listener of the first object stays.
  const auto onSecond = listen(second);
  EXPECT_NE(onSecond, onFirst);
  EXPECT_EQ(platform::backend::observersOf(*first).front(), onFirst);
  // The listener is replaced even without an object.
  EXPECT_NE(listen(nullptr), onSecond);
  EXPECT_EQ(platform::backend::observersOf(*second).size(), 1U);
}

TEST(Gating, SwallowsOnlyExceptionsOfThePlatform) {
  const auto view = std::make_shared<platform::UIView>();
  const StrangeObserver unknown;
  EXPECT_FALSE(platform::swallowingNSException([&] { view->removeObserver(unknown, "hidden"); }));
  EXPECT_TRUE(platform::swallowingNSException([] {}));
  EXPECT_THROW(platform::swallowingNSException([] { throw std::runtime_error("other"); }),
               std::runtime_error);
}

}  // namespace
