// Decides at each display refresh which frame is due. Main thread. Nothing fails.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "gifview/frame_durations.h"

namespace lumora {

class PlaybackClock {
 public:
  // Advances by one refresh of the given nominal length. Returns the index of the frame to show, or
  // nothing if none is due: frame i is due when its own delay, divided by the speed, has passed
  // since the frame before it was shown. The time by which a refresh is late is not carried over.
  // At speed 0 no frame is ever due; at a negative speed, and without any durations at another
  // speed, one is due at every refresh.
  std::optional<std::int32_t> tick(std::chrono::duration<double> refresh,
                                   const FrameDurations& durations, float speed);

  // Returns how many of the next ticks, at most max, will show nothing if they are alike.
  int ticksToSkip(std::chrono::duration<double> refresh, const FrameDurations& durations,
                  float speed, int max) const;
  // Makes that many ticks.
  void skip(int ticks, std::chrono::duration<double> refresh);

  // Moves on to the next frame after a due one was shown. Returns true if it was the last of
  // frameCount. If there are durations, the next tick then resets the index and shows nothing.
  bool advance(std::int32_t frameCount);

 private:
  bool isInRange(const FrameDurations& durations) const;

  // The index of the next frame to show and of the delay before it.
  std::int32_t currentFrame_ = 0;
  std::chrono::duration<double> timeSinceLastAnimationFrame_{0};
};

}  // namespace lumora
