// Arithmetic on pixels of straight RGBA. Inline, because it is used in inner loops.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace platform::backend {

// Returns value * alpha / 255, rounded.
constexpr std::uint8_t premultiplied(std::uint8_t value, std::uint8_t alpha) {
  const std::uint32_t product = std::uint32_t{value} * alpha + 128;
  return static_cast<std::uint8_t>((product + (product >> 8)) >> 8);
}

// Returns true if every pixel's alpha is 255.
[[gnu::always_inline]] inline bool isOpaque(const std::uint8_t* pixels, std::size_t count) {
  std::uint32_t all = ~0U;
  for (std::size_t x = 0; x < count; ++x) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, pixels + x * sizeof pixel, sizeof pixel);
    all &= pixel;
  }
  std::array<std::uint8_t, sizeof all> bytes{};
  std::memcpy(bytes.data(), &all, sizeof all);
  return bytes[3] == 255;
}

}  // namespace platform::backend
