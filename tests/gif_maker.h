// Small GIFs, made to measure.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/image.h"

namespace testing_stage {

using Color = std::array<std::uint8_t, 3>;

constexpr Color red{255, 0, 0};
constexpr Color green{0, 255, 0};
constexpr Color blue{0, 0, 255};
constexpr Color white{255, 255, 255};

struct Frame {
  Color color = red;
  // Hundredths of a second; nothing leaves the graphic control extension out.
  std::optional<int> delay = 10;
};

// Every frame fills the whole screen with its colour.
platform::Bytes makeGif(const std::vector<Frame>& frames, int width = 4, int height = 4);

}  // namespace testing_stage
