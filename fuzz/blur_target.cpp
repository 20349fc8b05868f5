// Fuzzes the blur: for any small image and radius, the size stays and transparent pixels are all 0.

#include <cstdlib>

#include "gifview/blur.h"
#include "platform/linux/images/picture/picture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t headSize = 4;
  if (size < headSize) return 0;
  const int width = 1 + data[0] % 64;
  const int height = 1 + data[1] % 64;
  const int radius = data[2] | data[3] << 8;
  platform::Bytes pixels(data + headSize, data + size);
  pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  const auto image = platform::backend::imageFromPixels(width, height, pixels);
  const auto blurred = lumora::blurImageWithRadius(image, radius);
  if (!blurred || blurred->width() != width || blurred->height() != height) std::abort();
  const platform::Bytes result = platform::backend::pixelsOf(*blurred);
  for (std::size_t at = 0; radius > 0 && at < result.size(); at += 4) {
    const bool isNothing = result[at + 3] == 0;
    if (isNothing && (result[at] != 0 || result[at + 1] != 0 || result[at + 2] != 0)) std::abort();
  }
  return 0;
}
