// Queues, notifications, messages, timers and images of the device.

#include <mutex>

#include <gtest/gtest.h>

#include "platform/autorelease_pool.h"
#include "platform/display_link.h"
#include "platform/image_filter.h"
#include "platform/image_source.h"
#include "platform/messaging_center.h"
#include "platform/notify_center.h"
#include "platform/objc_runtime.h"
#include "platform/operation_queue.h"
#include "simulator/frameworks/stand_ins.h"
#include "tests/fixture/gif_maker.h"
#include "tests/ios/pump.h"
#include "threads/main_queue_hop.h"
#include "threads/main_thread.h"

namespace {

TEST(Queues, RunSerialBlocksInOrder) {
  platform::NSOperationQueue queue;
  queue.setMaxConcurrentOperationCount(1);
  std::vector<int> order;
  for (int each = 0; each < 20; ++each) {
    queue.addOperationWithBlock([&order, each] {
      EXPECT_FALSE(lumora::isMainThread());
      lumora::hopToMainQueue(
          [&order, each] {
            EXPECT_TRUE(lumora::isMainThread());
            order.push_back(each);
          },
          lumora::deadlineFromNow());
    });
  }
  ASSERT_TRUE(runUntil([&order] { return order.size() == 20; }));
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(Notifications, KeepTheRegistrationsOfTwoCentersApart) {
  platform::DarwinNotifyCenter one;
  platform::DarwinNotifyCenter other;
  std::vector<std::string> heard;
  auto hear = [&heard](const std::string& name) { heard.push_back(name); };
  one.addObserver(nullptr, "a.name", hear);
  other.addObserver(nullptr, "a.name", hear);
  other.addObserver(&heard, "another.name", hear);
  stand_ins::postFromOutside("a.name");
  EXPECT_EQ(heard.size(), 2U);
  other.removeEveryObserver(nullptr);
  stand_ins::postFromOutside("a.name");
  stand_ins::postFromOutside("another.name");
  EXPECT_EQ(heard.size(), 4U);
  platform::DarwinNotifyCenter::post("said");
  EXPECT_EQ(stand_ins::takePosted(), std::vector<std::string>{"said"});
}

TEST(Messages, ReachEveryTargetOnceAServerRuns) {
  const auto center = platform::CPDistributedMessagingCenter::centerNamed("some.center");
  EXPECT_EQ(center, platform::CPDistributedMessagingCenter::centerNamed("some.center"));
  std::vector<int> called;
  center->registerForMessageName("go", [&called] { called.push_back(1); });
  center->registerForMessageName("go", [&called] { called.push_back(2); });
  center->sendMessageName("go");
  EXPECT_FALSE(center->doesServerExist());
  center->runServerOnCurrentThread();
  EXPECT_TRUE(center->doesServerExist());
  center->sendMessageName("go");
  center->sendMessageName("unknown");
  runUntil([&called] { return called.size() >= 2; });
  EXPECT_EQ(called, (std::vector<int>{1, 2}));
}

}  // namespace

// Counts its instances, so that a test can tell when they are deallocated.
@interface Sentinel : NSObject
@end
static int sentinels = 0;
@implementation Sentinel
- (id)init {
  self = [super init];
  ++sentinels;
  return self;
}
- (void)dealloc {
  --sentinels;
  [super dealloc];
}
@end

namespace {

TEST(Pools, ReleaseTemporaryObjectsAtTheirEnd) {
  {
    const platform::NSAutoreleasePool pool;
    [[[Sentinel alloc] init] autorelease];
    EXPECT_EQ(sentinels, 1);
  }
  EXPECT_EQ(sentinels, 0);
}

TEST(Links, FireUntilInvalidatedEvenIfUnowned) {
  int fired = 0;
  std::weak_ptr<int> watched;
  @autoreleasepool {
    const auto held = std::make_shared<int>();
    watched = held;
    auto link = platform::CADisplayLink::displayLinkWithTarget(
        [&fired, held](const platform::CADisplayLink& self) {
          EXPECT_NEAR(self.duration().count(), 1.0 / 60, 1e-9);
          // From its own callback, as playback does at the end of a cycle.
          if (++fired == 3) const_cast<platform::CADisplayLink&>(self).invalidate();
        });
    link->setFrameInterval(1);
    link->addToMainRunLoop();
  }
  EXPECT_FALSE(watched.expired());
  for (int refresh = 0; refresh < 5; ++refresh) {
    @autoreleasepool {
      stand_ins::refreshDisplay();
    }
  }
  EXPECT_EQ(fired, 3);
  EXPECT_EQ(stand_ins::linkCount(), 0U);
  // The link has released its target.
  EXPECT_TRUE(watched.expired());
}

TEST(Images, AreDecodedFilteredAndEncoded) {
  using testing_stage::red;
  const auto source = platform::CGImageSource::createWithData(
      platform::NSData::dataWithBytes(testing_stage::makeGif({{red, 25}, {red, 1}}, 2, 1)));
  ASSERT_TRUE(source);
  ASSERT_EQ(source->count(), 2);
  EXPECT_EQ(source->copyPropertiesAtIndex(0)->gif->unclampedDelayTime, 0.25);
  EXPECT_EQ(source->copyPropertiesAtIndex(2), std::nullopt);
  EXPECT_EQ(source->createImageAtIndex(2), nullptr);
  const auto image = source->createImageAtIndex(0);
  ASSERT_TRUE(image);
  const auto blurred = platform::CIImage::gaussianBlur(image, 2);
  EXPECT_EQ(blurred.extent(), (platform::CGRect{-6, -6, 14, 13}));
  const auto part = blurred.render({0, 0, 2, 1});
  ASSERT_TRUE(part);
  EXPECT_EQ(part->width(), 2);
  const auto png = platform::UIImagePNGRepresentation(*part);
  ASSERT_TRUE(png && png->writeToFileAtomically("/var/mobile/picture.png"));
  EXPECT_EQ(platform::imageWithContentsOfFile("/var/mobile/picture.png")->width(), 2);
  EXPECT_EQ(platform::imageWithContentsOfFile("/var/mobile/none.png"), nullptr);
  EXPECT_EQ(platform::CGImageSource::createWithData(platform::NSData::dataWithBytes({1, 2})),
            nullptr);
}

// Classes, methods and ivars that the host lacks must not crash it.
TEST(Names, ResolveToNothingIfUnknown) {
  EXPECT_EQ(platform::objc_getClass("SBNotThere"), nullptr);
  EXPECT_EQ(platform::class_getInstanceVariable(nullptr, "_x"), nullptr);
  const platform::Class cls = platform::objc_getClass("SBWallpaperController");
  const platform::id controller =
      platform::objc_msgSend<platform::id>(platform::classObject(cls), "sharedInstance");
  ASSERT_NE(controller, nullptr);
  EXPECT_EQ(platform::class_getInstanceVariable(cls, "_notThere"), nullptr);
  EXPECT_EQ(platform::viewAtOffset(controller, platform::ivar_getOffset(nullptr)), nullptr);
  platform::objc_msgSend<void>(controller, "_noSuchMethod");
  EXPECT_EQ(platform::objc_msgSend<platform::id>(nullptr, "sharedInstance"), nullptr);
  platform::IMP previous = nullptr;
  platform::MSHookMessageEx(nullptr, platform::sel_registerName("dealloc"), nullptr, &previous);
  platform::MSHookMessageEx(cls, platform::sel_registerName("_noSuchMethod"), nullptr, &previous);
  EXPECT_EQ(previous, nullptr);
  EXPECT_TRUE(stand_ins::hookedMethods().empty());
}

}  // namespace
