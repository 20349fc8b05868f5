#include "platform/linux/images/scaling/scaler.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::backend::scaling::Scaler;
using platform::backend::scaling::Sides;

// The value of one wanted pixel along one side, in double precision.
double expectedValue(const std::vector<double>& values, const Sides& sides, int at) {
  const double step = sides.length / sides.size;
  const double start = (sides.first + at - sides.start) * step;
  const int last = sides.length - 1;
  if (sides.isEnlarged()) {
    const double place = std::clamp(start + step / 2 - 0.5, 0.0, static_cast<double>(last));
    const int left = static_cast<int>(place);
    const double right = values[static_cast<std::size_t>(std::min(left + 1, last))];
    return std::lerp(values[static_cast<std::size_t>(left)], right, place - left);
  }
  double sum = 0;
  for (int pixel = 0; pixel <= last; ++pixel) {
    const double covered = std::min(start + step, pixel + 1.0) - std::max<double>(start, pixel);
    sum += std::max(covered, 0.0) * values[static_cast<std::size_t>(pixel)];
  }
  return sum / step;
}

struct Case {
  Sides across;
  Sides down;
};

// Averages when it shrinks, interpolates when it enlarges, each side for itself.
TEST(Scaler, IsExactWithinOneLevel) {
  const Case cases[] = {
      {{117, 0, 39, 0, 39}, {253, 0, 84, 0, 84}},
      {{36, 0, 192, 3, 150}, {69, -130, 368, 0, 108}},
      {{37, 3.3, 20.5, 4, 19}, {53, 4.7, 91.25, 5, 90}},
      {{40, -10.2, 101, 0, 90}, {41, 0, 20.7, 0, 20}},
      {{1, 0, 50, 0, 50}, {1, 0, 3, 0, 3}},
      {{64, 0, 64, 0, 64}, {48, 0, 48, 0, 48}},
  };
  std::mt19937 random(1);
  Scaler scaler;
  for (const auto& [across, down] : cases) {
    const auto width = static_cast<std::size_t>(across.length);
    std::vector<std::uint8_t> picture(width * static_cast<std::size_t>(down.length) * 4);
    for (auto& byte : picture) byte = static_cast<std::uint8_t>(random());
    std::vector<std::uint8_t> scaled(static_cast<std::size_t>(across.count * down.count) * 4);
    scaler.scale({picture.data(), std::ptrdiff_t{4} * across.length}, across, down,
                 {scaled.data(), std::ptrdiff_t{4} * across.count});
    double worst = 0;
    for (int y = 0; y < down.count; ++y) {
      for (std::size_t channel = 0; channel < 4; ++channel) {
        std::vector<double> row(width);
        for (std::size_t x = 0; x < width; ++x) {
          std::vector<double> column(static_cast<std::size_t>(down.length));
          for (std::size_t at = 0; at < column.size(); ++at) {
            column[at] = picture[(at * width + x) * 4 + channel];
          }
          row[x] = expectedValue(column, down, y);
        }
        for (int x = 0; x < across.count; ++x) {
          const auto at = static_cast<std::size_t>(y * across.count + x) * 4 + channel;
          worst = std::max(worst, std::abs(expectedValue(row, across, x) - scaled[at]));
        }
      }
    }
    EXPECT_LE(worst, 1) << across.length << "x" << down.length;
  }
}

}  // namespace
