// Portable views and the native views behind them.

#include <thread>

#import <Foundation/NSDebug.h>
#include <gtest/gtest.h>

#include "gifview/gif_view.h"
#include "platform/autorelease_pool.h"
#include "platform/image_view.h"
#import "platform/ios/native_view.h"
#include "simulator/frameworks/stand_ins.h"
#include "tests/ios/pump.h"

namespace {

class Observer : public platform::KeyValueObserver {
 public:
  void observeValueForKeyPath(std::string_view keyPath, platform::UIView& object,
                              const void* seen) override {
    EXPECT_EQ(keyPath, "hidden");
    hidden.push_back(object.hidden());
    context = seen;
  }
  std::vector<bool> hidden;
  const void* context = nullptr;
};

TEST(Views, FindAnimatedViewsInTheHostsTree) {
  UIView* native = [[[UIView alloc] init] autorelease];
  const auto host = platform::viewOfNative(native);
  const auto animated = std::make_shared<platform::UIView>();
  animated->setTag(1337);
  host->addSubview(animated);
  EXPECT_EQ([[[native subviews] objectAtIndex:0] tag], 1337);
  EXPECT_TRUE([[[native subviews] objectAtIndex:0] isKindOfClass:[LWGIFView class]]);
  ASSERT_EQ(host->subviews().size(), 1U);
  EXPECT_EQ(host->subviews().front(), animated);
  EXPECT_EQ(platform::nativeView(*animated->superview()), native);
}

TEST(Views, AreKeptAliveOnlyByTheTree) {
  std::weak_ptr<platform::UIView> watched;
  @autoreleasepool {
    const auto host = platform::viewOfNative([[[UIView alloc] init] autorelease]);
    watched = [&host] {
      const auto animated = std::make_shared<platform::UIView>();
      host->addSubview(animated);
      return animated;
    }();
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(host->subviews().front(), watched.lock());
    watched.lock()->removeFromSuperview();
  }
  EXPECT_TRUE(watched.expired());
}

TEST(Views, ForwardGeometryAndAppearance) {
  const auto view = std::make_shared<platform::UIImageView>();
  UIView* native = platform::nativeView(*view);
  EXPECT_TRUE([native isKindOfClass:[UIImageView class]]);
  view->setFrame({1, 2, 3, 4});
  EXPECT_EQ([native frame].size.height, 4);
  EXPECT_EQ(view->frame(), (platform::CGRect{1, 2, 3, 4}));
  view->setAlpha(0.5);
  EXPECT_EQ([native alpha], 0.5);
  view->setContentMode(platform::UIViewContentMode::ScaleAspectFill);
  EXPECT_EQ([native contentMode], 2);
  view->setBackgroundColor({0.1, 0.2, 0.3, 0.4});
  EXPECT_EQ(view->backgroundColor().alpha, 0.4);
  view->setImage(nullptr);
  EXPECT_EQ([(UIImageView*)native image], nil);
}

TEST(Views, NotifyObserversUntilTheirRemoval) {
  const auto view = platform::viewOfNative([[[UIView alloc] init] autorelease]);
  const auto observer = std::make_shared<Observer>();
  int token = 0;
  view->addObserver(observer, "hidden", &token);
  view->setHidden(true);
  view->setHidden(false);
  EXPECT_EQ(observer->hidden, (std::vector<bool>{true, false}));
  EXPECT_EQ(observer->context, &token);
  view->removeObserver(*observer, "hidden");
  view->setHidden(true);
  EXPECT_EQ(observer->hidden.size(), 2U);
}

TEST(Views, ReleaseListenersOnlyOnTheMainThread) {
  const auto view = platform::viewOfNative([[[SBFWallpaperView alloc] init] autorelease]);
  const auto observer = std::make_shared<Observer>();
  view->addObserver(observer, "hidden", nullptr);
  auto listeners = [] { return GSDebugAllocationCount(NSClassFromString(@"LWWallpaperListener")); };
  ASSERT_EQ(listeners(), 1);
  std::thread([&] {
    const platform::NSAutoreleasePool pool;
    view->removeObserver(*observer, "hidden");
  }).join();
  EXPECT_EQ(listeners(), 1);
  EXPECT_TRUE(runUntil([&] { return listeners() == 0; }));
}

TEST(Views, KeepOneOfTwoRegistrations) {
  const auto view = platform::viewOfNative([[[SBFWallpaperView alloc] init] autorelease]);
  const auto observer = std::make_shared<Observer>();
  view->addObserver(observer, "hidden", nullptr);
  view->addObserver(observer, "hidden", nullptr);
  view->removeObserver(*observer, "hidden");
  EXPECT_EQ(view->firstObserver(), observer);
  view->setHidden(true);
  EXPECT_EQ(observer->hidden.size(), 1U);
  view->removeObserver(*observer, "hidden");
  EXPECT_EQ(view->firstObserver(), nullptr);
}

TEST(Views, RaiseSwallowedExceptionsForUnknownObservers) {
  const auto view = platform::viewOfNative([[[SBFWallpaperView alloc] init] autorelease]);
  const auto other = platform::viewOfNative([[[SBFWallpaperView alloc] init] autorelease]);
  const auto observer = std::make_shared<Observer>();
  auto removal = [&] { view->removeObserver(*observer, "hidden"); };
  EXPECT_FALSE(platform::swallowingNSException(removal));
  other->addObserver(observer, "hidden", nullptr);
  EXPECT_FALSE(platform::swallowingNSException(removal));
  other->removeObserver(*observer, "hidden");
}

TEST(Views, HideForeignFirstObservers) {
  SBFWallpaperView* native = [[[SBFWallpaperView alloc] init] autorelease];
  NSObject* stranger = [[[NSObject alloc] init] autorelease];
  [native addObserver:stranger forKeyPath:@"hidden" options:0 context:nil];
  const auto own = std::make_shared<Observer>();
  const auto view = platform::viewOfNative(native);
  view->addObserver(own, "hidden", nullptr);
  EXPECT_EQ(view->firstObserver(), nullptr);
  view->removeObserver(*own, "hidden");
  [native removeObserver:stranger forKeyPath:@"hidden"];
}

}  // namespace
