#include "gifview/playback_clock.h"

namespace lumora {

std::optional<std::int32_t> PlaybackClock::tick(std::chrono::duration<double> refresh,
                                                const FrameDurations& durations, float speed) {
  timeSinceLastAnimationFrame_ += refresh;
  if (!isInRange(durations)) {
    currentFrame_ = 0;
    return std::nullopt;
  }
  const auto index = static_cast<std::size_t>(currentFrame_);
  const double delay = durations && index < durations->size() ? (*durations)[index] : 0;
  // This comparison is false for 0 divided by 0, which is not due either.
  const bool isDue = timeSinceLastAnimationFrame_.count() >= delay / static_cast<double>(speed);
  if (!isDue) return std::nullopt;
  timeSinceLastAnimationFrame_ = std::chrono::duration<double>::zero();
  return currentFrame_;
}

// Counts in a copy, because the sum of the refreshes decides, to the last bit.
int PlaybackClock::ticksToSkip(std::chrono::duration<double> refresh,
                               const FrameDurations& durations, float speed, int max) const {
  if (!isInRange(durations)) return 0;
  PlaybackClock copy = *this;
  int count = 0;
  while (count < max && !copy.tick(refresh, durations, speed)) ++count;
  return count;
}

void PlaybackClock::skip(int ticks, std::chrono::duration<double> refresh) {
  for (; ticks > 0; --ticks) timeSinceLastAnimationFrame_ += refresh;
}

// Without durations the index is never reset, so it must be able to wrap around.
bool PlaybackClock::advance(std::int32_t frameCount) {
  currentFrame_ = static_cast<std::int32_t>(static_cast<std::uint32_t>(currentFrame_) + 1);
  return currentFrame_ >= frameCount;
}

// Without durations every frame is in range, and every tick shows one.
bool PlaybackClock::isInRange(const FrameDurations& durations) const {
  if (currentFrame_ < 0) return false;
  if (!durations || durations->empty()) return true;
  return static_cast<std::size_t>(currentFrame_) < durations->size();
}

}  // namespace lumora
