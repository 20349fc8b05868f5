#include "gifview/gif_frame_delay.h"

#include <limits>

namespace lumora {
namespace {

// Slightly less than 0.02, so that a delay of two hundredths is kept.
constexpr double minDelay = 0.02 - std::numeric_limits<float>::epsilon();
constexpr double delayOfTooShort = 0.1;

double storedDelay(const std::optional<platform::ImageProperties>& properties) {
  if (!properties || !properties->gif) return 0;
  const platform::GIFProperties& gif = *properties->gif;
  if (!gif.unclampedDelayTime) return 0;
  if (*gif.unclampedDelayTime <= 0 && gif.delayTime) return *gif.delayTime;
  return *gif.unclampedDelayTime;
}

}  // namespace

double CGImageSourceGetGifFrameDelay(const platform::CGImageSource& source, int index) {
  return gifFrameDelay(source.copyPropertiesAtIndex(index));
}

double gifFrameDelay(const std::optional<platform::ImageProperties>& properties) {
  const double delay = storedDelay(properties);
  return delay < minDelay ? delayOfTooShort : delay;
}

}  // namespace lumora
