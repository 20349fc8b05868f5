// The library in a host of real Objective-C classes, from its hooks to the first image.

#include <atomic>
#include <fstream>

#include <gtest/gtest.h>

#include "gifview/gif_view.h"
#include "hooks/hook_table.h"
#include "placement/tweak_queue.h"
#include "placement/view_slots.h"
#include "placement/wallpaper_listener.h"
#import "platform/ios/native_view.h"
#include "settings/device_paths.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "simulator/frameworks/stand_ins.h"
#include "tests/fixture/gif_maker.h"
#include "tests/ios/pump.h"

namespace {

// A single frame of 2 by 1 pixels.
void writeGif(const char* path) {
  const auto gif = testing_stage::makeGif({{testing_stage::red}}, 2, 1);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(gif.data()), static_cast<std::streamsize>(gif.size()));
}

SBWallpaperController* controller() {
  return [SBWallpaperController sharedInstance];
}

SpringBoard* launch() {
  lumora::installHooks();
  SpringBoard* host = [[[SpringBoard alloc] init] autorelease];
  [host applicationDidFinishLaunching:nil];
  return host;
}

TEST(Library, HooksItsMethodsInTableOrder) {
  lumora::installHooks();
  EXPECT_EQ(stand_ins::hookedMethods(),
            (std::vector<std::string>{
                "SBFWallpaperView dealloc",
                "SpringBoard applicationDidFinishLaunching:", "SBDockView defaultHeight"}));
  EXPECT_TRUE([SpringBoard instancesRespondToSelector:@selector(LumoraDeviceDidRotate:)]);
}

TEST(Library, RunsTheHostsLaunchAndCreatesItsDirectory) {
  EXPECT_EQ(launch()->launches_, 1);
  EXPECT_TRUE([[NSFileManager defaultManager] fileExistsAtPath:@"/var/mobile/Library/Lumora"]);
}

TEST(Library, CatchesExceptionsDuringItsOwnLaunch) {
  stand_ins::raisesAtRegistration = true;
  EXPECT_EQ(launch()->launches_, 1);
  EXPECT_FALSE(stand_ins::raisesAtRegistration);
}

TEST(Library, ForwardsAndRecordsTheDockHeight) {
  lumora::installHooks();
  EXPECT_EQ([SBDockView defaultHeight], 96);
  EXPECT_EQ(lumora::getDockHeight(), 96);
}

TEST(Library, TakesInAndPlaysAChosenGif) {
  launch();
  // Nothing has been chosen yet, which must not end the host.
  stand_ins::postFromOutside(lumora::control::wallpaperNeedsUpdating);
  const std::string chosen = "/var/mobile/SHARED_LUMORA_WALLPAPER.gif";
  writeGif(chosen.c_str());
  lumora::setPreferencesObjectKey(chosen, "SAFARI_DIRECTORY");
  stand_ins::postFromOutside(lumora::control::wallpaperNeedsUpdating);
  ASSERT_TRUE(runUntil([] { return lumora::getWallpaperSet(); }));
  const auto view = lumora::sharedGIFView.load();
  ASSERT_TRUE(view);
  SBFWallpaperView* wallpaper = controller()->_sharedWallpaperView;
  EXPECT_EQ([platform::nativeView(*view) superview], wallpaper);
  EXPECT_EQ([platform::nativeView(*view) frame].size.height, 568 - 96);
  EXPECT_EQ([platform::nativeView(*view->imageView()) frame].size.height, 568 - 96);
  // Playback starts when the host shows its wallpaper.
  [wallpaper setHidden:YES];
  [wallpaper setHidden:NO];
  ASSERT_TRUE(runUntil([] { return stand_ins::linkCount() == 1; }));
  EXPECT_EQ(view->imageView()->image(), nullptr);
  for (int refresh = 0; refresh < 7; ++refresh) stand_ins::refreshDisplay();
  ASSERT_TRUE(view->imageView()->image());
  EXPECT_EQ(view->imageView()->image()->width(), 2);
  [wallpaper setHidden:YES];
  EXPECT_TRUE(runUntil([] { return stand_ins::linkCount() == 0; }));
  view->imageView()->setImage(nullptr);
}

TEST(Library, FollowsDeviceRotation) {
  launch();
  writeGif(lumora::sharedGIFPath);
  stand_ins::postFromOutside(lumora::control::updateWallpaper);
  ASSERT_TRUE(runUntil([] { return lumora::getWallpaperSet(); }));
  stand_ins::orientation = 3;
  [[NSNotificationCenter defaultCenter]
      postNotificationName:@"UIDeviceOrientationDidChangeNotification"
                    object:nil];
  const auto view = lumora::sharedGIFView.load();
  EXPECT_TRUE(runUntil([&view] { return view->frame() == platform::CGRect{0, 0, 568 - 96, 320}; }));
}

TEST(Library, InstallsDespiteAnExceptionInTheHost) {
  launch();
  writeGif(lumora::sharedGIFPath);
  stand_ins::raisesAtRedraw = true;
  NSDate* const begin = [NSDate date];
  stand_ins::postFromOutside(lumora::control::updateWallpaper);
  EXPECT_TRUE(runUntil([] { return lumora::getWallpaperSet(); }));
  // The installation does not wait for its limit of five seconds.
  EXPECT_GT([begin timeIntervalSinceNow], -4);
  EXPECT_FALSE(stand_ins::raisesAtRedraw);
}

TEST(Library, DetachesItsListenerFromADyingWallpaper) {
  launch();
  writeGif(lumora::sharedGIFPath);
  stand_ins::postFromOutside(lumora::control::updateWallpaper);
  ASSERT_TRUE(runUntil([] { return lumora::getWallpaperSet(); }));
  // The installation still holds the view until it returns.
  std::atomic<bool> isOver = false;
  lumora::addToTweakQueue([&isOver] { isOver = true; });
  ASSERT_TRUE(runUntil([&isOver] { return isOver.load(); }));
  @autoreleasepool {
    ASSERT_TRUE(platform::viewOfNative(controller()->_sharedWallpaperView)->firstObserver());
    [controller()->_sharedWallpaperView release];
    controller()->_sharedWallpaperView = nil;
  }
  EXPECT_EQ(stand_ins::observersAtDealloc, std::vector<std::size_t>{0});
  // Only exceptions that the host causes itself reach it.
  auto raisedAtDealloc = [](NSObject* observer) {
    SBFWallpaperView* wallpaper = [[SBFWallpaperView alloc] init];
    if (observer != nil) {
      [wallpaper addObserver:observer forKeyPath:@"hidden" options:0 context:nil];
    } else {
      lumora::LWWallpaperListener::addListenerToObject(platform::viewOfNative(wallpaper),
                                                       lumora::homescreenListener);
    }
    @try {
      [wallpaper release];
    } @catch (NSException* raised) {
      return std::string([[raised name] UTF8String]);
    }
    return std::string();
  };
  @autoreleasepool {
    EXPECT_EQ(raisedAtDealloc([[[NSObject alloc] init] autorelease]),
              "NSInternalInconsistencyException");
    EXPECT_EQ(raisedAtDealloc(nil), "");
    stand_ins::raisesAtRemoval = true;
    EXPECT_EQ(raisedAtDealloc(nil), "NSInternalInconsistencyException");
  }
  EXPECT_EQ(stand_ins::observersAtDealloc, (std::vector<std::size_t>{0, 1, 0, 1}));
}

TEST(Library, FinishesInstallingWithoutWallpaperViews) {
  launch();
  writeGif(lumora::sharedGIFPath);
  stand_ins::makesNoWallpapers = true;
  stand_ins::postFromOutside(lumora::control::updateAnimating);
  ASSERT_TRUE(runUntil([] { return lumora::getWallpaperSet(); }));
  ASSERT_TRUE(lumora::sharedGIFView.load());
  EXPECT_EQ(lumora::sharedGIFView.load()->superview(), nullptr);
  // The view is attached once there is a wallpaper view.
  stand_ins::makesNoWallpapers = false;
  stand_ins::postFromOutside(lumora::control::updateAnimating);
  EXPECT_TRUE(runUntil([] { return lumora::sharedGIFView.load()->superview() != nullptr; }));
}

TEST(Library, KeepsPlayingDespiteADamagedFrame) {
  launch();
  writeGif(lumora::sharedGIFPath);
  stand_ins::postFromOutside(lumora::control::updateAnimating);
  ASSERT_TRUE(runUntil([] { return stand_ins::linkCount() == 1; }));
  const auto view = lumora::sharedGIFView.load();
  ASSERT_TRUE(view);
  std::ofstream(view->frameCache().framePath(0)) << "no picture";
  for (int refresh = 0; refresh < 8; ++refresh) {
    stand_ins::refreshDisplay();
    runUntil([] { return stand_ins::linkCount() == 1; });
  }
  EXPECT_EQ(view->imageView()->image(), nullptr);
  EXPECT_EQ(stand_ins::linkCount(), 1U);
}

}  // namespace
