#include "platform/linux/images/gif/palette_matcher.h"

#include <algorithm>

namespace platform::backend::gif {

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
  IndexMapping mapping{shown, {}};
  for (std::size_t index = 0; index < maxColors; ++index) {
    mapping.to[index] = static_cast<std::uint8_t>(index);
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
