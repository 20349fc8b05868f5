#include "platform/linux/images/gif/index_blitter.h"

#include <cstring>

#include "platform/linux/for_every_processor.h"

namespace platform::backend::gif {
namespace {

LUMORA_FOR_EVERY_PROCESSOR
void copyExcept(std::uint8_t hidden, std::uint8_t* __restrict target,
                const std::uint8_t* __restrict source, std::size_t width) {
  for (std::size_t x = 0; x < width; ++x) {
    target[x] = source[x] == hidden ? target[x] : source[x];
  }
}

}  // namespace

IndexBlitter::IndexBlitter(const IndexMapping& mapping, std::size_t indexCount) {
  int hiddenCount = 0;
  for (std::size_t index = 0; index < indexCount; ++index) {
    if (mapping.isShown[index]) continue;
    ++hiddenCount;
    hiddenIndex_ = static_cast<std::uint8_t>(index);
  }
  if (keepsIndices(mapping) && hiddenCount == 0) strategy_ = &IndexBlitter::copyRow;
  if (keepsIndices(mapping) && hiddenCount == 1) strategy_ = &IndexBlitter::copyRowExceptHidden;
  for (std::size_t index = 0; index < maxColors; ++index) {
    changes_[index] = mapping.isShown[index] ? Change{0, mapping.to[index]} : Change{255, 0};
  }
}

void IndexBlitter::copyRow(std::uint8_t* target, const std::uint8_t* source,
                           std::size_t width) const {
  std::memcpy(target, source, width);
}

void IndexBlitter::copyRowExceptHidden(std::uint8_t* target, const std::uint8_t* source,
                                       std::size_t width) const {
  copyExcept(hiddenIndex_, target, source, width);
}

void IndexBlitter::translateRow(std::uint8_t* target, const std::uint8_t* source,
                                std::size_t width) const {
  for (std::size_t x = 0; x < width; ++x) {
    const Change change = changes_[source[x]];
    target[x] = static_cast<std::uint8_t>((target[x] & change.kept) | change.added);
  }
}

}  // namespace platform::backend::gif
