#include "platform/linux/helper_thread.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

using namespace platform::backend;

TEST(HelperTask, IsDoneByWhoeverWantsItsResultFirst) {
  const auto here = std::this_thread::get_id();
  std::atomic<bool> released = false;
  std::vector<HelperTask<std::thread::id>> busy;
  busy.reserve(static_cast<std::size_t>(maxHelpers()));
  std::atomic<int> begun = 0;
  auto wait = [&released, &begun] {
    ++begun;
    while (!released) std::this_thread::yield();
    return std::this_thread::get_id();
  };
  for (int each = 0; each < maxHelpers(); ++each) busy.push_back(startOnHelperThread(wait));
  while (begun < maxHelpers()) std::this_thread::yield();
  auto wanted = startOnHelperThread([] { return std::this_thread::get_id(); });
  EXPECT_EQ(wanted.get(), here);
  std::atomic<bool> isRun = false;
  startOnHelperThread([&isRun] { isRun = true; });
  released = true;
  for (auto& task : busy) EXPECT_NE(task.get(), here);
  // Helpers are free now and must not begin what was canceled.
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_FALSE(isRun);
}

TEST(HelperTask, PassesExceptionsOnAndOutlivesItsHelper) {
  auto task = startOnHelperThread([]() -> int { throw std::runtime_error("no"); });
  EXPECT_THROW(task.get(), std::runtime_error);
  // Idle helpers have ended by then.
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  std::atomic<bool> isRun = false;
  auto later = startOnHelperThread([&isRun] { isRun = true; });
  for (int each = 0; maxHelpers() > 0 && !isRun && each < 5000; ++each) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_EQ(isRun, maxHelpers() > 0);
}

TEST(InParallel, DoesEverythingOnceAndPassesExceptionsOn) {
  std::vector<std::atomic<int>> times(1000);
  inParallel(times.size(), 1, [&times](std::size_t at) { ++times[at]; });
  EXPECT_TRUE(std::ranges::all_of(times, [](const auto& each) { return each == 1; }));
  EXPECT_THROW(inParallel(9, 1, [](std::size_t) { throw std::runtime_error("no"); }),
               std::runtime_error);
}

TEST(HelperTask, NeedsNoThread) {
  pthread_attr_t enormous;
  pthread_attr_init(&enormous);
  constexpr std::size_t moreThanThereIs = std::size_t{1} << 50;
  pthread_attr_setstacksize(&enormous, moreThanThereIs);
  ASSERT_EQ(pthread_setattr_default_np(&enormous), 0);
  EXPECT_EQ(startOnHelperThread([] { return std::this_thread::get_id(); }).get(),
            std::this_thread::get_id());
}

}  // namespace
