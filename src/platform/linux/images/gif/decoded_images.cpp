#include "platform/linux/images/gif/decoded_images.h"

#include <utility>

namespace platform::backend::gif {

std::span<const std::uint8_t> DecodedImages::indicesOf(int index, bool isInOrder) {
  if (slots_.empty()) slots_.resize(static_cast<std::size_t>(maxHelpers()) + 1);
  const SubImage& image = file_.images[static_cast<std::size_t>(index)];
  Slot& slot = slotFor(index);
  const bool isDecoded = std::exchange(slot.index, none) == index;
  if (!isDecoded) slot.rows = {};
  for (int ahead = 1; isInOrder && ahead <= maxHelpers(); ++ahead) decodeAhead(index + ahead);
  const int rows = isDecoded ? slot.rows.get() : decode(image, slot.buffer);
  return slot.buffer.indices().first(static_cast<std::size_t>(rows) * image.width);
}

DecodedImages::Slot& DecodedImages::slotFor(int index) {
  return slots_[static_cast<std::size_t>(index) % slots_.size()];
}

// Images that are larger than the canvas are left out, so that they do not take its memory several
// times.
void DecodedImages::decodeAhead(int index) {
  // Decoding a smaller image takes less time than waking a thread.
  constexpr std::int64_t minPixels = std::int64_t{1} << 14;
  if (index >= static_cast<int>(file_.images.size())) return;
  const SubImage& image = file_.images[static_cast<std::size_t>(index)];
  const std::int64_t pixels = std::int64_t{image.width} * image.height;
  if (pixels < minPixels || pixels > std::int64_t{file_.width} * file_.height) return;
  Slot& slot = slotFor(index);
  if (slot.index == index) return;
  slot.rows = {};
  slot.index = index;
  slot.rows =
      startOnHelperThread([this, &image, &buffer = slot.buffer] { return decode(image, buffer); });
}

}  // namespace platform::backend::gif
