// Fuzzes the PNG reader. An image that it can read must be the same after writing and reading.

#include <cstdlib>

#include <zlib.h>

#include "platform/linux/images/picture/picture.h"
#include "platform/linux/images/png/reader.h"

namespace {

using Byte = std::uint8_t;

std::uint32_t numberAt(const Byte* at) {
  return std::uint32_t{at[0]} << 24 | std::uint32_t{at[1]} << 16 | std::uint32_t{at[2]} << 8 |
         at[3];
}

// Corrects the checksum of every chunk, without which nearly all inputs would be rejected.
void mendChecksums(Byte* png, std::size_t size) {
  constexpr std::size_t signatureSize = 8;
  constexpr std::size_t fieldSize = 4;
  for (std::size_t at = signatureSize; at + 3 * fieldSize <= size;) {
    const std::size_t length = numberAt(png + at);
    const std::size_t checksumAt = at + 2 * fieldSize + length;
    if (checksumAt + fieldSize > size) return;
    const auto sum = static_cast<std::uint32_t>(
        crc32(0, png + at + fieldSize, static_cast<uInt>(fieldSize + length)));
    for (int byte = 0; byte < 4; ++byte) {
      png[checksumAt + static_cast<std::size_t>(byte)] = static_cast<Byte>(sum >> (24 - 8 * byte));
    }
    at = checksumAt + fieldSize;
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(Byte* data, std::size_t size, std::size_t largest);

extern "C" std::size_t LLVMFuzzerCustomMutator(Byte* data, std::size_t size, std::size_t largest,
                                               unsigned /*seed*/) {
  const std::size_t newSize = LLVMFuzzerMutate(data, size, largest);
  mendChecksums(data, newSize);
  return newSize;
}

extern "C" int LLVMFuzzerTestOneInput(const Byte* data, std::size_t size) {
  const auto file = platform::NSData::dataWithBytes(platform::Bytes(data, data + size));
  const auto image = platform::backend::png::decodePng(*file);
  if (!image) return 0;
  constexpr int largest = 1 << 18;
  if (image->width() * image->height() > largest) return 0;
  const auto again = platform::backend::png::decodePng(*platform::UIImagePNGRepresentation(*image));
  if (!again || platform::backend::pixelsOf(*again) != platform::backend::pixelsOf(*image))
    std::abort();
  return 0;
}
