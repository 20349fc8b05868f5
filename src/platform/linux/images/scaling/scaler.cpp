#include "platform/linux/images/scaling/scaler.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/linux/for_every_processor.h"

namespace platform::backend::scaling {
namespace {

constexpr int channels = 4;

// The channels of one pixel.
typedef std::uint8_t Bytes4 __attribute__((vector_size(4)));
typedef std::uint16_t Averages4 __attribute__((vector_size(8)));
typedef std::uint32_t Sums4 __attribute__((vector_size(16)));

// Returns a weight as the share of the second of two pixels, for which 2^15 stands for 1.
std::int16_t shareOf(std::uint32_t weight) {
  constexpr std::uint32_t maxShare = 32767;
  return static_cast<std::int16_t>(std::min(weight / 2, maxShare));
}

inline std::int16_t times(std::int16_t value, std::int16_t share) {
  return static_cast<std::int16_t>(((std::int32_t{value} * share >> 14) + 1) >> 1);
}

// Scales a row of averages across.
LUMORA_FOR_EVERY_PROCESSOR void scaleAverages(const std::uint16_t* in, const Axis& axis,
                                              std::uint8_t* out) {
  constexpr std::uint32_t half = 1 << 23;
  for (const Taps& taps : axis.taps) {
    const std::uint32_t* weights = axis.weightsOf(taps);
    Sums4 sum = {half, half, half, half};
    for (int at = 0; at < taps.count; ++at) {
      Averages4 pixel;
      std::memcpy(&pixel, in + static_cast<std::ptrdiff_t>(taps.first + at) * channels,
                  sizeof pixel);
      sum += __builtin_convertvector(pixel, Sums4) * weights[at];
    }
    const Bytes4 scaled = __builtin_convertvector(sum >> 24, Bytes4);
    std::memcpy(out, &scaled, sizeof scaled);
    out += channels;
  }
}

// Scales a row of pixels across.
void scalePixels(const std::uint8_t* in, const Axis& axis, std::int16_t* out) {
  for (const Taps& taps : axis.taps) {
    for (int channel = 0; channel < channels; ++channel) {
      constexpr int shift = 9;
      std::uint32_t sum = 1 << (shift - 1);
      for (int at = 0; at < taps.count; ++at) {
        sum += in[(taps.first + at) * channels + channel] * axis.weightsOf(taps)[at];
      }
      *out++ = static_cast<std::int16_t>(sum >> shift);
    }
  }
}

// Interpolates between values of 8 bits.
LUMORA_FOR_EVERY_PROCESSOR void interpolateValues(const std::uint8_t* left,
                                                  const std::uint8_t* right,
                                                  const std::int16_t* shares, std::int16_t* out,
                                                  std::size_t count) {
  for (std::size_t at = 0; at < count; ++at) {
    const auto value = static_cast<std::int16_t>(left[at] << 7);
    const auto difference = static_cast<std::int16_t>((right[at] << 7) - value);
    out[at] = static_cast<std::int16_t>(value + times(difference, shares[at]));
  }
}

LUMORA_FOR_EVERY_PROCESSOR void addRow(const std::uint8_t* row, std::uint32_t weight,
                                       std::uint32_t* sums, std::size_t count) {
  for (std::size_t at = 0; at < count; ++at) sums[at] += row[at] * weight;
}

LUMORA_FOR_EVERY_PROCESSOR void average(const std::uint32_t* sums, std::uint16_t* averages,
                                        std::size_t count) {
  constexpr std::uint32_t half = 128;
  for (std::size_t at = 0; at < count; ++at) {
    averages[at] = static_cast<std::uint16_t>((sums[at] + half) >> 8);
  }
}

LUMORA_FOR_EVERY_PROCESSOR void interpolate(const std::int16_t* above, const std::int16_t* below,
                                            std::int16_t share, std::uint8_t* out,
                                            std::size_t count) {
  for (std::size_t at = 0; at < count; ++at) {
    const auto difference = static_cast<std::int16_t>(below[at] - above[at]);
    const auto value = static_cast<std::int16_t>(above[at] + times(difference, share) + 64);
    out[at] = static_cast<std::uint8_t>(value >> 7);
  }
}

}  // namespace

void Scaler::scale(const Source& source, const Sides& across, const Sides& down,
                   const Target& target) {
  if (!(across_.sides == across)) setAcross(across);
  if (!(down_.sides == down)) down_ = axisOf(down);
  if (down.isEnlarged()) {
    enlargeRows(source, target);
  } else {
    shrinkRows(source, target);
  }
}

// Adds up rows before pixels, because fewer rows remain.
void Scaler::shrinkRows(const Source& source, const Target& target) {
  const int begin = across_.taps.front().first;
  const Taps& last = across_.taps.back();
  const auto count = static_cast<std::size_t>(last.first + last.count - begin) * channels;
  const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(begin) * channels;
  averages_.resize(count);
  std::uint8_t* out = target.pixels;
  for (const Taps& taps : down_.taps) {
    sums_.assign(count, 0);
    for (int at = 0; at < taps.count; ++at) {
      const std::uint8_t* row = source.pixels + (taps.first + at) * source.stride + offset;
      addRow(row, down_.weightsOf(taps)[at], sums_.data(), count);
    }
    average(sums_.data(), averages_.data(), count);
    scaleAverages(averages_.data() - offset, across_, out);
    out += target.stride;
  }
}

// Scales rows across before it interpolates, because there are fewer rows then.
void Scaler::enlargeRows(const Source& source, const Target& target) {
  numbers_ = {-1, -1};
  const std::size_t count = across_.taps.size() * channels;
  std::uint8_t* out = target.pixels;
  for (const Taps& taps : down_.taps) {
    const std::int16_t* above = enlargedRow(source, taps.first);
    const std::int16_t* below = taps.count > 1 ? enlargedRow(source, taps.first + 1) : above;
    const std::int16_t share = taps.count > 1 ? shareOf(down_.weightsOf(taps)[1]) : std::int16_t{0};
    interpolate(above, below, share, out, count);
    out += target.stride;
  }
}

// Two rows that follow each other have different places.
const std::int16_t* Scaler::enlargedRow(const Source& source, int row) {
  const auto place = static_cast<std::size_t>(row % 2);
  auto& scaled = rows_[place];
  if (std::exchange(numbers_[place], row) == row) return scaled.data();
  const std::uint8_t* pixels = source.pixels + row * source.stride;
  scaled.resize(across_.taps.size() * channels);
  if (!across_.sides.isEnlarged()) {
    scalePixels(pixels, across_, scaled.data());
    return scaled.data();
  }
  // Neighbors side by side make one loop of the rest.
  for (std::size_t at = 0; at < across_.taps.size(); ++at) {
    const Taps& taps = across_.taps[at];
    const std::uint8_t* left = pixels + static_cast<std::ptrdiff_t>(taps.first) * channels;
    const std::ptrdiff_t toRight = static_cast<std::ptrdiff_t>(taps.count - 1) * channels;
    std::memcpy(&left_[at * channels], left, channels);
    std::memcpy(&right_[at * channels], left + toRight, channels);
  }
  interpolateValues(left_.data(), right_.data(), shares_.data(), scaled.data(), scaled.size());
  return scaled.data();
}

void Scaler::setAcross(const Sides& across) {
  across_ = axisOf(across);
  const std::size_t count = across_.taps.size() * channels;
  left_.resize(count);
  right_.resize(count);
  shares_.clear();
  for (const Taps& taps : across_.taps) {
    shares_.insert(shares_.end(), channels,
                   taps.count > 1 ? shareOf(across_.weightsOf(taps)[1]) : 0);
  }
}

}  // namespace platform::backend::scaling
