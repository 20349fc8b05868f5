// Decides at each display refresh which frame is due. Only arithmetic; main thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "gifview/frame_durations.h"

namespace lumora {

class PlaybackClock {
 public:
  // Advances by one refresh of the given nominal length. Returns the frame to show now, if one is
  // due: frame i comes when its own delay, divided by the speed, has passed since the frame before.
  // What the refresh overshoots is dropped. At speed 0 none is ever due, at a negative speed one
  // at every refresh.
  std::optional<std::int32_t> tick(std::chrono::duration<double> refresh,
                                   const FrameDurations& durations, float speed);

  // Goes on to the next frame, after a due one was shown. Returns true if that was the last of
  // frameCount. The index stays past the end: the next tick finds it there and starts over, which
  // costs that one tick.
  bool advance(std::int32_t frameCount);

 private:
  bool isInRange(const FrameDurations& durations) const;

  // Index of the next frame to show and of the delay to wait before it.
  std::int32_t currentFrame_ = 0;
  std::chrono::duration<double> timeSinceLastAnimationFrame_{0};
};

}  // namespace lumora
