// Fuzzes the list of delays, and the playback clock with it.

#include "fuzz/device.h"
#include "gifview/frame_cache.h"
#include "gifview/playback_clock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const lumora::FrameCacheLayout layout("/cache.gif");
  fuzz::store(data, size, layout.durationsPath());
  const auto durations = lumora::loadFrameDurations(layout);
  lumora::PlaybackClock clock;
  constexpr std::chrono::duration<double> refresh{0.01};
  constexpr int refreshes = 200;
  for (int count = 0; count < refreshes; ++count) {
    const auto due = clock.tick(refresh, durations, 1);
    if (due) clock.advance(durations ? static_cast<std::int32_t>(durations->size()) : 0);
  }
  return 0;
}
