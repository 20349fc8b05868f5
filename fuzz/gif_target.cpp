// Fuzzes the GIF decoder: reads every frame and its delay as the frame cache does.

#include <algorithm>

#include "gifview/gif_frame_delay.h"
#include "platform/image_source.h"

namespace {

// Larger images and more frames would only take longer.
constexpr std::int64_t maxScreenSize = 128 * 128;
constexpr int maxFrames = 32;

std::int64_t screenOf(const std::uint8_t* gif) {
  constexpr int width = 6;
  constexpr int height = 8;
  auto word = [gif](int at) -> std::int64_t { return gif[at] | gif[at + 1] << 8; };
  return word(width) * word(height);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t headerSize = 13;
  if (size < headerSize || screenOf(data) > maxScreenSize) return 0;
  auto source = platform::CGImageSource::createWithData(
      platform::NSData::dataWithBytes(platform::Bytes(data, data + size)));
  const int frames = source ? std::min(source->count(), maxFrames) : 0;
  for (int frame = 0; frame < frames; ++frame) {
    source->createImageAtIndex(frame);
    lumora::CGImageSourceGetGifFrameDelay(*source, frame);
  }
  return 0;
}
