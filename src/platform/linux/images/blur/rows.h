// The inner loops of the Gaussian blur, on rows of premultiplied values, four per pixel.
//
// Values have 16 bits, 7 of them fractional, so that the sum of two still fits. A weighted sum
// needs an addition and the upper half of a product, for sixteen values at once. The compiler
// generates each loop for the kinds of processors named in rows.cpp; the version for the processor
// at hand is chosen when the program is loaded.
//
// Requires that out does not overlap an input. Any thread. Nothing throws except gaussianKernel,
// which throws std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform::backend::blur {

using Value = std::uint16_t;
constexpr int fractionBits = 7;
constexpr int channels = 4;

// convolve runs over whole blocks of values, so its rows must have room up to the end of a block.
constexpr std::size_t block = 64;
constexpr std::size_t wholeBlocks(std::size_t values) {
  return (values + block - 1) / block * block;
}

// Returns the place of row y, for any y, among a number of rows that are reused in turn.
constexpr std::size_t placeInTurn(int y, int count) {
  return static_cast<std::size_t>((y % count + count) % count);
}

// The weights of a Gaussian, cut off where less than a thousandth remains: first the weight of the
// center, then that of each of the two neighbors at every distance up to reach. 2^16 stands for 1.
struct Kernel {
  int reach;
  std::vector<std::uint16_t> weights;
};
// deviation is in pixels.
Kernel gaussianKernel(double deviation);

// Computes the weighted sum of 2 * kernel.reach + 1 rows.
void convolve(const std::uint8_t* const* rows, const Kernel& kernel, Value* out,
              std::size_t values);
void convolve(const Value* const* rows, const Kernel& kernel, Value* out, std::size_t values);

// Halves the height: computes one row from five, with the weights 1, 4, 6, 4, 1.
void downsampleVertically(const std::uint8_t* const* rows, Value* out, std::size_t values);
void downsampleVertically(const Value* const* rows, Value* out, std::size_t values);
// Halves the width with the same weights: out[x] is computed from row[2 * x] and its neighbors.
// pixels is the width of the result. Reads two pixels before the row and two after it.
void downsampleHorizontally(const Value* row, Value* out, std::size_t pixels);

// Doubles the height with the same weights: computes two rows, even at the middle row and odd after
// it.
void upsampleVertically(const Value* before, const Value* middle, const Value* after, Value* even,
                        Value* odd, std::size_t values);
// Doubles the width: computes out[2 * x] and out[2 * x + 1] from row[x] and its neighbors. pixels
// is the width of the row. Reads one pixel before the row and one after it.
void upsampleHorizontally(const Value* row, Value* out, std::size_t pixels);

// Returns true if every pixel's alpha is 255, so that straight and premultiplied bytes are the
// same.
bool areOpaque(const std::uint8_t* straight, std::size_t pixels);
// Converts bytes of straight RGBA to premultiplied ones.
void premultiply(const std::uint8_t* straight, std::uint8_t* out, std::size_t pixels);
// Converts premultiplied values to bytes of straight RGBA, rounded.
void unpremultiply(const Value* row, std::uint8_t* straight, std::size_t pixels);

}  // namespace platform::backend::blur
