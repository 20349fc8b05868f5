#include "platform/linux/images/gif/palette_matcher.h"

#include <algorithm>
#include <numeric>

namespace platform::backend::gif {

IndexMapping sameIndices(const IndexSet& shown) {
  IndexMapping mapping{shown, {}};
  std::iota(mapping.to.begin(), mapping.to.end(), std::uint8_t{0});
  return mapping;
}

void keepUnused(IndexMapping& mapping, const IndexSet& used) {
  for (std::size_t index = 0; index < maxColors; ++index) {
    if (used[index]) continue;
    mapping.isShown[index] = true;
    mapping.to[index] = static_cast<std::uint8_t>(index);
  }
}

bool keepsIndices(const IndexMapping& mapping) {
  for (std::size_t index = 0; index < maxColors; ++index) {
    if (mapping.isShown[index] && mapping.to[index] != index) return false;
  }
  return true;
}

// Uses four sets in turn, because consecutive stores to the same byte would wait for each other.
IndexSet usedIndices(std::span<const std::uint8_t> indices) {
  std::array<IndexSet, 4> used{};
  std::size_t at = 0;
  for (; at + used.size() <= indices.size(); at += used.size()) {
    for (std::size_t lane = 0; lane < used.size(); ++lane) used[lane][indices[at + lane]] = true;
  }
  for (; at < indices.size(); ++at) used[0][indices[at]] = true;
  for (std::size_t index = 0; index < maxColors; ++index) {
    for (const auto& lane : used) used[0][index] = used[0][index] || lane[index];
  }
  return used[0];
}

std::optional<std::uint8_t> indexOfColor(Palette& palette, RGBAColor color) {
  const auto end = palette.colors.begin() + static_cast<std::ptrdiff_t>(palette.count);
  const auto at = std::find(palette.colors.begin(), end, color);
  if (at == palette.colors.end()) return std::nullopt;
  if (at == end) {
    *at = color;
    ++palette.count;
  }
  return static_cast<std::uint8_t>(at - palette.colors.begin());
}

std::optional<IndexMapping> matchColors(Palette& palette, const IndexSet& shown,
                                        const ColorTable& colors) {
  const std::size_t before = palette.count;
  IndexMapping mapping = sameIndices(shown);
  for (std::size_t index = 0; index < maxColors; ++index) {
    if (!shown[index]) continue;
    const RGBAColor color = opaque(colors[index]);
    // If indices stay the same, they need not be searched for, and drawing is faster.
    if (index < palette.count && palette.colors[index] == color) continue;
    const auto found = indexOfColor(palette, color);
    if (!found) {
      palette.count = before;
      return std::nullopt;
    }
    mapping.to[index] = *found;
  }
  return mapping;
}

}  // namespace platform::backend::gif
