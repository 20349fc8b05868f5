// Scales pictures of 32-bit pixels, of which the fourth byte is an alpha with which the others are
// multiplied, or unused.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/linux/images/scaling/axis.h"

namespace platform::backend::scaling {

// Pixels in memory. stride: bytes from one row to the next.
struct Source {
  const std::uint8_t* pixels = nullptr;
  std::ptrdiff_t stride = 0;
};
struct Target {
  std::uint8_t* pixels = nullptr;
  std::ptrdiff_t stride = 0;
};

// Keeps what is equal for all frames of an animation. One thread at a time.
class Scaler {
 public:
  // Writes the wanted pixels of the scaled picture. source and target begin with the first pixel of
  // the picture and with the first wanted pixel. All four bytes of a pixel are scaled. The error is
  // at most one level of 255. Throws std::bad_alloc.
  void scale(const Source& source, const Sides& across, const Sides& down, const Target& target);

 private:
  void setAcross(const Sides& across);
  void shrinkRows(const Source& source, const Target& target);
  void enlargeRows(const Source& source, const Target& target);
  const std::int16_t* enlargedRow(const Source& source, int row);

  Axis across_;
  Axis down_;
  // Sums of rows of the picture, with 8 fractional bits.
  std::vector<std::uint32_t> sums_;
  std::vector<std::uint16_t> averages_;
  // Two rows scaled across, with 7 fractional bits, and their numbers in the picture.
  std::array<std::vector<std::int16_t>, 2> rows_;
  std::array<int, 2> numbers_{-1, -1};
  // For a row that is enlarged: of each value its two neighbors and the share of the right one.
  std::vector<std::uint8_t> left_;
  std::vector<std::uint8_t> right_;
  std::vector<std::int16_t> shares_;
};

}  // namespace platform::backend::scaling
