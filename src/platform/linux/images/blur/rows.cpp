#include "platform/linux/images/blur/rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "platform/linux/for_every_processor.h"
#include "platform/linux/images/picture/pixels.h"

namespace platform::backend::blur {
namespace {

constexpr std::size_t pixelSize = channels;

inline Value widened(std::uint8_t value) {
  return static_cast<Value>(value << fractionBits);
}
inline Value widened(Value value) {
  return value;
}

inline Value weighted(Value value, std::uint16_t weight) {
  return static_cast<Value>(std::uint32_t{value} * weight >> 16);
}

// Adds up all rows of a block before the next block, so that its sums stay in registers.
template <typename Element>
[[gnu::always_inline]] inline void convolveRows(const Element* const* rows, const Kernel& kernel,
                                                Value* out, std::size_t values) {
  const int reach = kernel.reach;
  const std::uint16_t* weights = kernel.weights.data();
  // Compensates for products being rounded down.
  const auto bias = static_cast<Value>((reach + 1) / 2);
  for (std::size_t start = 0; start < values; start += block) {
    const Element* middle = rows[reach] + start;
    Value sums[block];
    for (std::size_t at = 0; at < block; ++at) {
      sums[at] = static_cast<Value>(bias + weighted(widened(middle[at]), weights[0]));
    }
    for (int distance = 1; distance <= reach; ++distance) {
      const Element* before = rows[reach - distance] + start;
      const Element* after = rows[reach + distance] + start;
      const std::uint16_t weight = weights[distance];
      for (std::size_t at = 0; at < block; ++at) {
        const auto both = static_cast<Value>(widened(before[at]) + widened(after[at]));
        sums[at] = static_cast<Value>(sums[at] + weighted(both, weight));
      }
    }
    for (std::size_t at = 0; at < block; ++at) out[start + at] = sums[at];
  }
}

inline std::uint32_t binomial(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d,
                              std::uint32_t e) {
  return a + e + 4 * (b + d) + 6 * c;
}

// Returns 255 * 2^16 divided by each alpha, to divide values with 7 fractional bits.
std::array<std::uint32_t, 256> makeReciprocals() {
  std::array<std::uint32_t, 256> reciprocals{};
  for (std::uint32_t alpha = 1; alpha < reciprocals.size(); ++alpha) {
    reciprocals[alpha] = (255U << 16) / (alpha << fractionBits);
  }
  return reciprocals;
}

void unpremultiplyPixel(const Value* values, std::uint8_t* pixel) {
  static const std::array<std::uint32_t, 256> reciprocals = makeReciprocals();
  const std::uint32_t alpha = pixel[3];
  for (std::size_t channel = 0; channel < 3; ++channel) {
    const std::uint32_t scaled = (values[channel] * reciprocals[alpha] + (1U << 15)) >> 16;
    pixel[channel] = static_cast<std::uint8_t>(std::min(scaled, 255U));
  }
}

}  // namespace

Kernel gaussianKernel(double deviation) {
  // Less than a thousandth of the weight is cut off, on both sides together.
  constexpr double maxDeviations = 3.4;
  // Small enough for a kernel of a single pixel; avoids division by 0.
  constexpr double minDeviation = 0.1;
  deviation = std::max(deviation, minDeviation);
  Kernel kernel{std::max(1, static_cast<int>(std::ceil(maxDeviations * deviation - 0.5))), {}};
  std::vector<double> weights;
  double sum = 0;
  for (int distance = 0; distance <= kernel.reach; ++distance) {
    const double deviations = distance / deviation;
    weights.push_back(std::exp(-deviations * deviations / 2));
    sum += distance == 0 ? weights.back() : 2 * weights.back();
  }
  constexpr double one = 1 << 16;
  long rest = 1L << 16;
  for (const double weight : weights) {
    const long rounded = std::min(std::lround(weight / sum * one), 65535L);
    kernel.weights.push_back(static_cast<std::uint16_t>(rounded));
    rest -= kernel.weights.back() * (kernel.weights.size() == 1 ? 1L : 2L);
  }
  constexpr long maxWeight = (1L << 16) - 1;
  kernel.weights.front() =
      static_cast<std::uint16_t>(std::min(kernel.weights.front() + rest, maxWeight));
  return kernel;
}

LUMORA_FOR_EVERY_PROCESSOR
void convolve(const std::uint8_t* const* rows, const Kernel& kernel, Value* out,
              std::size_t values) {
  convolveRows(rows, kernel, out, values);
}

LUMORA_FOR_EVERY_PROCESSOR
void convolve(const Value* const* rows, const Kernel& kernel, Value* out, std::size_t values) {
  convolveRows(rows, kernel, out, values);
}

LUMORA_FOR_EVERY_PROCESSOR
void downsampleVertically(const std::uint8_t* const* rows, Value* __restrict out,
                          std::size_t values) {
  for (std::size_t at = 0; at < values; ++at) {
    const std::uint32_t sum =
        binomial(rows[0][at], rows[1][at], rows[2][at], rows[3][at], rows[4][at]);
    out[at] = static_cast<Value>(sum << (fractionBits - 4));
  }
}

LUMORA_FOR_EVERY_PROCESSOR
void downsampleVertically(const Value* const* rows, Value* __restrict out, std::size_t values) {
  for (std::size_t at = 0; at < values; ++at) {
    const std::uint32_t sum =
        binomial(rows[0][at], rows[1][at], rows[2][at], rows[3][at], rows[4][at]);
    out[at] = static_cast<Value>((sum + 8) >> 4);
  }
}

LUMORA_FOR_EVERY_PROCESSOR
void downsampleHorizontally(const Value* __restrict row, Value* __restrict out,
                            std::size_t pixels) {
  for (std::size_t x = 0; x < pixels; ++x) {
    const Value* around = row + 2 * x * pixelSize;
    for (std::size_t channel = 0; channel < pixelSize; ++channel, ++around) {
      const std::uint32_t sum = binomial(around[-8], around[-4], around[0], around[4], around[8]);
      out[x * pixelSize + channel] = static_cast<Value>((sum + 8) >> 4);
    }
  }
}

LUMORA_FOR_EVERY_PROCESSOR
void upsampleVertically(const Value* __restrict before, const Value* __restrict middle,
                        const Value* __restrict after, Value* __restrict even,
                        Value* __restrict odd, std::size_t values) {
  for (std::size_t at = 0; at < values; ++at) {
    const std::uint32_t center = middle[at];
    even[at] = static_cast<Value>((before[at] + 6 * center + after[at] + 4) >> 3);
    odd[at] = static_cast<Value>((center + after[at] + 1) >> 1);
  }
}

LUMORA_FOR_EVERY_PROCESSOR
void upsampleHorizontally(const Value* __restrict row, Value* __restrict out, std::size_t pixels) {
  for (std::size_t x = 0; x < pixels; ++x) {
    const Value* around = row + x * pixelSize;
    Value* both = out + 2 * x * pixelSize;
    for (std::size_t channel = 0; channel < pixelSize; ++channel, ++around, ++both) {
      const std::uint32_t center = around[0];
      both[0] = static_cast<Value>((around[-4] + 6 * center + around[4] + 4) >> 3);
      both[4] = static_cast<Value>((center + around[4] + 1) >> 1);
    }
  }
}

LUMORA_FOR_EVERY_PROCESSOR
bool areOpaque(const std::uint8_t* straight, std::size_t pixels) {
  return isOpaque(straight, pixels);
}

LUMORA_FOR_EVERY_PROCESSOR
void premultiply(const std::uint8_t* straight, std::uint8_t* out, std::size_t pixels) {
  for (std::size_t x = 0; x < pixels; ++x, straight += pixelSize, out += pixelSize) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
      out[channel] = premultiplied(straight[channel], straight[3]);
    }
    out[3] = straight[3];
  }
}

LUMORA_FOR_EVERY_PROCESSOR
void unpremultiply(const Value* __restrict row, std::uint8_t* __restrict straight,
                   std::size_t pixels) {
  constexpr Value half = 1U << (fractionBits - 1);
  constexpr Value maxValue = 255;
  for (std::size_t at = 0; at < pixels * pixelSize; ++at) {
    const auto rounded = static_cast<Value>(static_cast<Value>(row[at] + half) >> fractionBits);
    straight[at] = static_cast<std::uint8_t>(std::min(rounded, maxValue));
  }
  constexpr std::size_t group = 64;
  for (std::size_t start = 0; start < pixels; start += group) {
    const std::size_t end = std::min(start + group, pixels);
    if (isOpaque(straight + start * pixelSize, end - start)) continue;
    for (std::size_t x = start; x < end; ++x) {
      std::uint8_t* pixel = straight + x * pixelSize;
      if (pixel[3] != 255) unpremultiplyPixel(row + x * pixelSize, pixel);
    }
  }
}

}  // namespace platform::backend::blur
