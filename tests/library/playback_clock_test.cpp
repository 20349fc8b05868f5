#include "gifview/playback_clock.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using lumora::FrameDurations;
using lumora::PlaybackClock;

// Exact in binary, so that sums of refreshes are exact too.
constexpr std::chrono::duration<double> refresh{1.0 / 64};

FrameDurations durations(std::vector<double> seconds) {
  return std::make_shared<const std::vector<double>>(std::move(seconds));
}

// Returns the frame that each refresh shows, -1 for none. The list determines the frame count.
std::vector<int> timeline(PlaybackClock& clock, const FrameDurations& list, float speed,
                          int refreshes) {
  std::vector<int> shown;
  const int count = list ? static_cast<int>(list->size()) : 0;
  for (int each = 0; each < refreshes; ++each) {
    const auto due = clock.tick(refresh, list, speed);
    shown.push_back(due.value_or(-1));
    if (due) clock.advance(count);
  }
  return shown;
}

TEST(PlaybackClock, ShowsFramesAfterTheirDelaysPlusAWrapTick) {
  PlaybackClock clock;
  const auto list = durations({2.0 / 64, 1.0 / 64, 3.0 / 64});
  // The wrap's tick shows nothing, but its length counts toward frame 0's delay.
  EXPECT_EQ(timeline(clock, list, 1, 12),
            (std::vector<int>{-1, 0, 1, -1, -1, 2, -1, 0, 1, -1, -1, 2}));
}

TEST(PlaybackClock, SkipsExactlyTheTicksThatShowNothing) {
  // Sums of these are not exact.
  constexpr std::chrono::duration<double> inexact{1.0 / 60};
  const auto list = durations({0.1, 0.05, 0.3, 0, 1.0 / 60, 2.0 / 60, 0.7});
  for (const float speed : {1.0F, 0.3F, 2.5F, 0.0F, -1.0F}) {
    for (const int max : {3, 1000}) {
      PlaybackClock each;
      PlaybackClock skipping;
      int toSkip = 0;
      int skipped = 0;
      for (int tick = 0; tick < 3000; ++tick) {
        const auto expected = each.tick(inexact, list, speed);
        if (expected) each.advance(7);
        if (skipped < toSkip) {
          EXPECT_EQ(expected, std::nullopt);
          ++skipped;
          continue;
        }
        skipping.skip(skipped, inexact);
        const auto shown = skipping.tick(inexact, list, speed);
        ASSERT_EQ(shown, expected) << tick << " at speed " << speed;
        if (shown) skipping.advance(7);
        toSkip = skipping.ticksToSkip(inexact, list, speed, max);
        ASSERT_LE(toSkip, max);
        skipped = 0;
      }
      EXPECT_EQ(speed == 0 && max == 1000, toSkip == 1000);
    }
  }
}

TEST(PlaybackClock, DropsTheOvershootOfALateTick) {
  PlaybackClock clock;
  const auto list = durations({1.5 / 64, 1.5 / 64, 1.5 / 64, 1.5 / 64});
  EXPECT_EQ(timeline(clock, list, 1, 8), (std::vector<int>{-1, 0, -1, 1, -1, 2, -1, 3}));
}

TEST(PlaybackClock, DividesTheDelayByTheSpeed) {
  const auto list = durations({2.0 / 64, 2.0 / 64});
  PlaybackClock fast;
  EXPECT_EQ(timeline(fast, list, 2, 2), (std::vector<int>{0, 1}));
  PlaybackClock slow;
  EXPECT_EQ(timeline(slow, list, 0.5, 4), (std::vector<int>{-1, -1, -1, 0}));
}

TEST(PlaybackClock, StopsAtSpeedZeroAndAdvancesEveryTickBelow) {
  const auto list = durations({1.0 / 64, 0, 1.0 / 64});
  PlaybackClock frozen;
  EXPECT_EQ(timeline(frozen, list, 0, 3), (std::vector<int>{-1, -1, -1}));
  // Frame 1 has a delay of 0: 0 divided by 0 is not due either.
  PlaybackClock undefined;
  timeline(undefined, list, 1, 1);
  EXPECT_EQ(timeline(undefined, list, 0, 2), (std::vector<int>{-1, -1}));
  PlaybackClock backwards;
  EXPECT_EQ(timeline(backwards, list, -1, 3), (std::vector<int>{0, 1, 2}));
}

TEST(PlaybackClock, ShowsAFrameAtEveryTickWithoutDelays) {
  PlaybackClock clock;
  EXPECT_EQ(timeline(clock, nullptr, 1, 4), (std::vector<int>{0, 1, 2, 3}));
  EXPECT_TRUE(clock.advance(0));
  PlaybackClock empty;
  EXPECT_EQ(timeline(empty, durations({}), 1, 2), (std::vector<int>{0, 1}));
}

}  // namespace
