// The inner loops of the Gaussian blur: rows of premultiplied values, four to the pixel.
//
// Values have 16 bits, 7 of them behind the point: two added still fit, and a weighted sum is an
// addition and the upper half of a product, sixteen lanes at once. The compiler makes each loop for
// every kind of processor that it names; the program picks one when it is loaded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform::backend::blur {

using Value = std::uint16_t;
constexpr int fractionBits = 7;
constexpr int channels = 4;

// Loops run over whole blocks: rows have room for them behind their end.
constexpr std::size_t block = 64;
constexpr std::size_t wholeBlocks(std::size_t values) {
  return (values + block - 1) / block * block;
}

// A true Gaussian, cut off where it no longer counts. Weights are fractions of 2^16: of the middle,
// then of both neighbours at each distance.
struct Kernel {
  int reach;
  std::vector<std::uint16_t> weights;
};
Kernel gaussianKernel(double deviation);

// rows points to 2 * reach + 1 rows, from the first to the last.
void weigh(const std::uint8_t* const* rows, const Kernel& kernel, Value* out, std::size_t values);
void weigh(const Value* const* rows, const Kernel& kernel, Value* out, std::size_t values);

// One row for two: five rows weighted 1, 4, 6, 4, 1.
void halveRows(const std::uint8_t* const* rows, Value* out, std::size_t values);
void halveRows(const Value* const* rows, Value* out, std::size_t values);
// The same along a row: out[x] around row[2 * x]. Both are counted in pixels of the result; two
// pixels before and behind are looked at.
void halveAlong(const Value* row, Value* out, std::size_t pixels);

// Two rows for one, with the same weights: the one at the middle row, and the one behind it.
void doubleRows(const Value* before, const Value* middle, const Value* behind, Value* even,
                Value* odd, std::size_t values);
// The same along a row: out[2 * x] and out[2 * x + 1] around row[x]. One pixel before and behind is
// looked at.
void doubleAlong(const Value* row, Value* out, std::size_t pixels);

// From straight to premultiplied colours, in bytes.
void premultiply(const std::uint8_t* straight, std::uint8_t* out, std::size_t pixels);
// From values to straight colours, rounded.
void finish(const Value* row, std::uint8_t* straight, std::size_t pixels);

}  // namespace platform::backend::blur
