// The PNG loader. What it can read is written and read again, and must come back as it was.

#include <cstdlib>

#include "platform/linux/png.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto image = platform::decodePng(platform::Bytes(data, data + size));
  if (!image) return 0;
  constexpr std::size_t largest = std::size_t{1} << 20;
  if (image->pixels.size() > largest) return 0;
  const auto again = platform::decodePng(platform::UIImagePNGRepresentation(*image));
  if (!again || again->pixels != image->pixels) std::abort();
  return 0;
}
