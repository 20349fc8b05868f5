// The structure of a GIF: its logical screen and where each image's data lie. Nothing is decoded
// here, and nothing of the declared sizes is allocated.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace platform::gif {

using Color = std::array<std::uint8_t, 3>;
using ColorTable = std::vector<Color>;

enum class Disposal { Keep, Clear, RestorePrevious };

struct Image {
  // Pixels on the logical screen; the rectangle may reach past it.
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool interlaced = false;
  // The table in force; empty if the file gives none.
  std::shared_ptr<const ColorTable> colors;
  std::optional<std::uint8_t> transparentIndex;
  Disposal disposal = Disposal::Keep;
  // Hundredths of a second, as stored; nothing without a graphic control extension.
  std::optional<int> delay;
  int minimumCodeSize = 0;
  // The data sub-blocks, from the first one's length byte on.
  std::span<const std::uint8_t> data;
};

struct File {
  int width = 0;
  int height = 0;
  std::vector<Image> images;
};

// More pixels than this, in one picture, are too large to hold (8K television has 33.2 million).
constexpr std::int64_t mostPixels = std::int64_t{1} << 25;

// More images than these are not read; the delays of so many still fit into a property list.
constexpr std::size_t mostImages = std::size_t{1} << 19;

// The images up to the first damage in the structure. Nothing if this is no GIF, or if its screen
// is empty or too large to hold. The result refers to the bytes.
std::optional<File> parse(std::span<const std::uint8_t> bytes);

}  // namespace platform::gif
