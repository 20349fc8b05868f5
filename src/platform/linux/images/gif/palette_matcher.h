// Finds indices in a canvas's palette for the colors of an image.
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

// What becomes of an image's indices on the canvas. One that is not shown leaves the pixel below
// it.
struct IndexMapping {
  IndexSet isShown{};
  // The canvas's index for each one that is shown.
  std::array<std::uint8_t, maxColors> to{};
};

constexpr RGBAColor transparent{0, 0, 0, 0};

constexpr RGBAColor opaque(const Color& color) {
  return {color[0], color[1], color[2], 255};
}

// The indices that occur.
IndexSet usedIndices(std::span<const std::uint8_t> indices);

// Returns the color's index in the palette, to which it is added if need be; nothing if the palette
// is full.
std::optional<std::uint8_t> indexOfColor(Palette& palette, RGBAColor color);

// Finds every shown index's color in the palette, to which missing ones are added. If there is no
// room for all, returns nothing and leaves the palette as it was. Requires a color for every shown
// index.
std::optional<IndexMapping> matchColors(Palette& palette, const IndexSet& shown,
                                        const ColorTable& colors);

}  // namespace platform::backend::gif
