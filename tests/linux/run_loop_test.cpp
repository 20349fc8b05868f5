#include "platform/linux/main_loop/run_loop.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/eventfd.h>

#include "platform/display_link.h"
#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/main_loop/activity.h"
#include "platform/linux/main_loop/display_clock.h"
#include "platform/linux/views/view_class.h"
#include "platform/operation_queue.h"
#include "threads/main_queue_hop.h"

namespace {

using namespace platform;
using namespace platform::backend;
using namespace std::chrono_literals;

bool turnUntil(const std::function<bool()>& condition) {
  const auto limit = RunLoop::Clock::now() + 10s;
  while (!condition() && RunLoop::Clock::now() < limit) RunLoop::main().turn(limit);
  return condition();
}

TEST(OperationQueue, RunsSerialBlocksInOrderEvenAfterDestruction) {
  std::vector<int> order;
  {
    NSOperationQueue queue;
    queue.setMaxConcurrentOperationCount(1);
    for (int each = 0; each < 100; ++each) {
      queue.addOperationWithBlock([&order, each] { order.push_back(each); });
    }
  }
  ASSERT_TRUE(turnUntil([] { return pendingBackgroundOperations() == 0; }));
  for (int each = 0; each < 100; ++each) EXPECT_EQ(order[static_cast<std::size_t>(each)], each);
}

TEST(OperationQueue, LimitsTheThreadsOfUnlimitedQueues) {
  std::atomic<bool> released = false;
  std::atomic<unsigned> running = 0;
  std::atomic<unsigned> most = 0;
  for (int each = 0; each < 200; ++each) {
    NSOperationQueue().addOperationWithBlock([&] {
      const unsigned now = ++running;
      if (now > most) most = now;
      RunLoop::main().wake();
      while (!released) std::this_thread::sleep_for(1ms);
      --running;
    });
  }
  // They do not block a serial queue.
  NSOperationQueue serial;
  serial.setMaxConcurrentOperationCount(1);
  std::atomic<bool> ranSerial = false;
  serial.addOperationWithBlock([&] { ranSerial = true; });
  EXPECT_TRUE(turnUntil([&] { return ranSerial.load(); }));
  EXPECT_TRUE(turnUntil([&] { return most >= 2; }));
  released = true;
  ASSERT_TRUE(turnUntil([] { return pendingBackgroundOperations() == 0; }));
  EXPECT_LE(most, 4U);
}

TEST(OperationQueue, KeepsBlocksWhileNoThreadCanBeCreated) {
  pthread_attr_t usual;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  pthread_attr_t enormous;
  pthread_attr_init(&enormous);
  constexpr std::size_t moreThanThereIs = std::size_t{1} << 50;
  pthread_attr_setstacksize(&enormous, moreThanThereIs);
  ASSERT_EQ(pthread_setattr_default_np(&enormous), 0);
  std::vector<int> order;
  NSOperationQueue queue;
  queue.setMaxConcurrentOperationCount(1);
  queue.addOperationWithBlock([&] { order.push_back(1); });
  EXPECT_EQ(pendingBackgroundOperations(), 1);
  pthread_setattr_default_np(&usual);
  queue.addOperationWithBlock([&] { order.push_back(2); });
  ASSERT_TRUE(turnUntil([] { return pendingBackgroundOperations() == 0; }));
  EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(MainQueue, RunsNestedBlocksInOrder) {
  std::vector<int> order;
  auto& queue = NSOperationQueue::mainQueue();
  queue.addOperationWithBlock([&] {
    order.push_back(1);
    queue.addOperationWithBlock([&] { order.push_back(3); });
  });
  queue.addOperationWithBlock([&] { order.push_back(2); });
  EXPECT_TRUE(RunLoop::main().runMainQueue());
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
  EXPECT_FALSE(RunLoop::main().runMainQueue());
}

TEST(MainQueueHop, ReturnsAfterItsBlockOrAtItsDeadline) {
  auto ran = std::make_shared<std::atomic<int>>(0);
  std::atomic<bool> isBack = false;
  std::thread worker([&] {
    lumora::hopToMainQueue([ran] { ++*ran; }, lumora::deadlineFromNow());
    isBack = true;
    RunLoop::main().wake();
  });
  EXPECT_TRUE(turnUntil([&] { return isBack.load(); }));
  worker.join();
  EXPECT_EQ(*ran, 1);
  // The main queue is not running: the wait ends, and the block runs later.
  lumora::hopToMainQueue([ran] { ++*ran; }, std::chrono::steady_clock::now() + 10ms);
  EXPECT_EQ(*ran, 1);
  RunLoop::main().runMainQueue();
  EXPECT_EQ(*ran, 2);
}

TEST(RunLoop, SleepsUntilALinkNeedsARefresh) {
  DisplayClock::main().setRefreshRate(100);
  int refreshes = 0;
  auto link = CADisplayLink::displayLinkWithTarget([&](const CADisplayLink& fired) {
    ++refreshes;
    EXPECT_EQ(fired.duration().count(), 1.0 / 100);
  });
  EXPECT_EQ(DisplayClock::main().nextRefresh(), std::nullopt);
  link->addToMainRunLoop();
  link.reset();
  // The run loop retains the link.
  EXPECT_TRUE(turnUntil([&] { return refreshes == 3; }));
}

TEST(DisplayLink, StopsAtOnceWhenAnotherLinkInvalidatesIt) {
  DisplayClock::main().setManual();
  int calls = 0;
  std::shared_ptr<CADisplayLink> second;
  auto first =
      CADisplayLink::displayLinkWithTarget([&](const CADisplayLink&) { second->invalidate(); });
  second = CADisplayLink::displayLinkWithTarget([&](const CADisplayLink&) { ++calls; });
  auto third = CADisplayLink::displayLinkWithTarget([&](const CADisplayLink&) { calls += 100; });
  third->setFrameInterval(2);
  for (const auto& link : {first, second, third}) link->addToMainRunLoop();
  int refreshes = 0;
  DisplayClock::main().advance(50ms, [&] { return ++refreshes > 0; });
  EXPECT_EQ(refreshes, 3);
  EXPECT_EQ(calls, 100);
}

TEST(DisplayLink, IsNotCalledForRefreshesThatItMaySkip) {
  auto& clock = DisplayClock::main();
  clock.setRefreshRate(10);
  std::vector<int> skipped;
  const auto target = [&](const CADisplayLink& fired) {
    skipped.push_back(fired.skippedRefreshes());
    fired.skipRefreshes(5);
  };
  const auto link = CADisplayLink::displayLinkWithTarget(target);
  link->addToMainRunLoop();
  const auto first = *clock.nextRefresh();
  clock.refreshIfDue(first);
  EXPECT_EQ(*clock.nextRefresh(), first + 600ms);
  EXPECT_FALSE(clock.refreshIfDue(first + 599ms));
  // Refreshes that are missed are not skipped ones.
  EXPECT_TRUE(clock.refreshIfDue(first + 850ms));
  EXPECT_EQ(skipped, (std::vector<int>{0, 5}));
  // Other work comes after the third refresh since.
  clock.catchUp(first + 1150ms);
  clock.endSkipping();
  EXPECT_EQ(*clock.nextRefresh(), first + 1200ms);
  clock.refreshIfDue(first + 1200ms);
  EXPECT_EQ(skipped, (std::vector<int>{0, 5, 2, 0}));
  // With another link, nothing is skipped.
  const auto other = CADisplayLink::displayLinkWithTarget([](const CADisplayLink&) {});
  other->addToMainRunLoop();
  EXPECT_EQ(*clock.nextRefresh(), first + 1300ms);
  link->invalidate();
  other->invalidate();
}

TEST(RunLoop, ChecksSkippedRefreshesAfterOtherWork) {
  DisplayClock::main().setRefreshRate(100);
  std::vector<int> skipped;
  const auto link = CADisplayLink::displayLinkWithTarget([&](const CADisplayLink& fired) {
    skipped.push_back(fired.skippedRefreshes());
    if (skipped.size() < 3) fired.skipRefreshes(1000);
  });
  RunLoop::main().setAlarm(&skipped, RunLoop::Clock::now() + 60ms, [] {});
  link->addToMainRunLoop();
  ASSERT_TRUE(turnUntil([&] { return skipped.size() == 3; }));
  EXPECT_GE(skipped[1], 2);
  EXPECT_EQ(skipped[2], 0);
  link->invalidate();
}

TEST(RunLoop, ChecksNoSkippedRefreshesAfterTheEndOfADrawing) {
  auto& clock = DisplayClock::main();
  clock.setRefreshRate(100);
  const FileDescriptor display(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  for (const bool isMore : {false, true}) {
    bool isHandled = false;
    const auto link = CADisplayLink::displayLinkWithTarget([&](const CADisplayLink& fired) {
      if (!isHandled) fired.skipRefreshes(1000);
    });
    RunLoop::main().addSource(display.get(), [&] {
      eventfd_t count = 0;
      isHandled = isHandled || eventfd_read(display.get(), &count) == 0;
      return isHandled && isMore;
    });
    link->addToMainRunLoop();
    clock.refreshIfDue(*clock.nextRefresh());
    eventfd_write(display.get(), 1);
    RunLoop::main().handleDue();
    ASSERT_TRUE(isHandled);
    EXPECT_EQ(*clock.nextRefresh() < RunLoop::Clock::now() + 1s, isMore);
    RunLoop::main().removeSource(display.get());
    link->invalidate();
  }
}

TEST(DisplayClock, RefreshesAtExactMultiplesOfThePeriod) {
  DisplayClock::main().setManual();
  int refreshes = 0;
  auto count = [&] { return ++refreshes > 0; };
  for (int each = 0; each < 1000; ++each) DisplayClock::main().advance(100ms, count);
  EXPECT_EQ(refreshes, 6000);
  DisplayClock::main().advance(0ns, count);
  DisplayClock::main().advance(16666666ns, count);
  EXPECT_EQ(refreshes, 6000);
  DisplayClock::main().advance(1ns, count);
  EXPECT_EQ(refreshes, 6001);
  // An advance that is interrupted leaves the clock at that refresh.
  EXPECT_FALSE(DisplayClock::main().advance(10s, [] { return false; }));
  EXPECT_EQ(DisplayClock::main().manualTime().count(), (6002 * 1000000000LL + 59) / 60);
}

int answer(id /*self*/, SEL /*selector*/, int value) {
  return value + 1;
}

int (*previousAnswer)(id, SEL, int) = nullptr;
int changedAnswer(id self, SEL selector, int value) {
  return 10 * previousAnswer(self, selector, value);
}

TEST(ObjectRuntime, ReplacesInheritedMethodsForTheSubclassOnly) {
  Class base = registerClass("Base", nullptr);
  Class derived = registerClass("Derived", base);
  addMethod(base, "answer:", answer);
  addClassMethod(base, "answer:", answer);
  MSHookMessageEx(derived, sel_registerName("answer:"), reinterpret_cast<IMP>(changedAnswer),
                  reinterpret_cast<IMP*>(&previousAnswer));
  objc_object one{base};
  objc_object other{derived};
  EXPECT_EQ((objc_msgSend<int, int>(&one, "answer:", 1)), 2);
  EXPECT_EQ((objc_msgSend<int, int>(&other, "answer:", 1)), 20);
  EXPECT_EQ((objc_msgSend<int, int>(classObject(derived), "answer:", 1)), 2);
  // A method that does not exist is not replaced.
  MSHookMessageEx(base, sel_registerName("unknown:"), reinterpret_cast<IMP>(changedAnswer),
                  reinterpret_cast<IMP*>(&previousAnswer));
  EXPECT_EQ((objc_msgSend<int, int>(&one, "unknown:", 1)), 0);
  EXPECT_EQ((objc_msgSend<int, int>(nullptr, "answer:", 1)), 0);
  EXPECT_EQ(objc_getClass("Unknown"), nullptr);
  // Adding a method does not replace an existing one.
  class_addMethod(base, sel_registerName("answer:"), nullptr, "v@:@");
  EXPECT_EQ((objc_msgSend<int, int>(&one, "answer:", 1)), 2);
}

}  // namespace
