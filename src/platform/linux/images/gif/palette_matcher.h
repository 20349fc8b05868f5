// Finds indices in a canvas's palette for the colors of an image. Nothing throws.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/picture/picture.h"

namespace platform::backend::gif {

// True for each index that is in the set.
using IndexSet = std::array<bool, maxColors>;

// How an image's indices are drawn on the canvas. An index that is not shown leaves the pixel on
// the canvas as it is.
struct IndexMapping {
  IndexSet isShown{};
  // The canvas's index for each index that is shown.
  std::array<std::uint8_t, maxColors> to{};
};

// Returns a mapping in which these indices are shown and stay the same.
IndexMapping sameIndices(const IndexSet& shown);

// Returns true if all indices that are shown stay the same.
bool keepsIndices(const IndexMapping& mapping);

// Lets the indices that are not used stay the same.
void keepUnused(IndexMapping& mapping, const IndexSet& used);

constexpr RGBAColor transparent{0, 0, 0, 0};

constexpr RGBAColor opaque(const Color& color) {
  return {color[0], color[1], color[2], 255};
}

// Returns the set of indices that occur.
IndexSet usedIndices(std::span<const std::uint8_t> indices);

// Returns the color's index in the palette, and adds it if it is missing. Returns nothing if the
// palette is full.
std::optional<std::uint8_t> indexOfColor(Palette& palette, RGBAColor color);

// Finds the color of every shown index in the palette, and adds those that are missing. Returns
// nothing, with the palette's count unchanged, if there is not enough room. Requires a color for
// every shown index.
std::optional<IndexMapping> matchColors(Palette& palette, const IndexSet& shown,
                                        const ColorTable& colors);

}  // namespace platform::backend::gif
