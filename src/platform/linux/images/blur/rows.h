// The inner loops of the Gaussian blur: rows of premultiplied values, four to the pixel.
//
// Values have 16 bits with 7 fractional bits: the sum of two still fits, and a weighted sum is an
// addition and the upper half of a product, sixteen lanes at once. The compiler makes each loop for
// every kind of processor that rows.cpp names; the program picks one when it is loaded.
//
// out never overlaps an input. Any thread; nothing here allocates but gaussianKernel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform::backend::blur {

using Value = std::uint16_t;
constexpr int fractionBits = 7;
constexpr int channels = 4;

// Loops run over whole blocks of values: rows must have room for them after their end.
constexpr std::size_t block = 64;
constexpr std::size_t wholeBlocks(std::size_t values) {
  return (values + block - 1) / block * block;
}

// A true Gaussian, cut off where less than a thousandth is left. Weights are fractions of 2^16: of
// the center, then of both neighbors at each distance.
struct Kernel {
  int reach;
  std::vector<std::uint16_t> weights;
};
// deviation: in pixels.
Kernel gaussianKernel(double deviation);

// Weighted sum of 2 * kernel.reach + 1 rows, from the first to the last.
void convolve(const std::uint8_t* const* rows, const Kernel& kernel, Value* out,
              std::size_t values);
void convolve(const Value* const* rows, const Kernel& kernel, Value* out, std::size_t values);

// Halves the height: makes one row of five, weighted 1, 4, 6, 4, 1.
void downsampleVertically(const std::uint8_t* const* rows, Value* out, std::size_t values);
void downsampleVertically(const Value* const* rows, Value* out, std::size_t values);
// Halves the width with the same weights: out[x] is made around row[2 * x]. pixels: of the result.
// Reads two pixels before the row and two after it.
void downsampleHorizontally(const Value* row, Value* out, std::size_t pixels);

// Doubles the height with the same weights: makes the row at the middle one and the one after it.
void upsampleVertically(const Value* before, const Value* middle, const Value* after, Value* even,
                        Value* odd, std::size_t values);
// Doubles the width: makes out[2 * x] and out[2 * x + 1] around row[x]. pixels: of the row. Reads
// one pixel before the row and one after it.
void upsampleHorizontally(const Value* row, Value* out, std::size_t pixels);

// Converts bytes of straight RGBA to premultiplied ones.
void premultiply(const std::uint8_t* straight, std::uint8_t* out, std::size_t pixels);
// Converts premultiplied values to bytes of straight RGBA, rounded.
void unpremultiply(const Value* row, std::uint8_t* straight, std::size_t pixels);

}  // namespace platform::backend::blur
