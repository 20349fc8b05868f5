#include "platform/linux/images/scaling/axis.h"

#include <algorithm>
#include <cmath>

namespace platform::backend::scaling {
namespace {

// Adds pixels with these weights. The sums of the first ones are rounded, so that all of them
// together are whole and none is negative.
void addTaps(Axis& axis, int first, const std::vector<double>& shares) {
  axis.taps.push_back(
      {first, static_cast<int>(shares.size()), static_cast<int>(axis.weights.size())});
  double sum = 0;
  std::uint32_t before = 0;
  for (std::size_t at = 0; at < shares.size(); ++at) {
    sum += shares[at];
    const bool isLast = at + 1 == shares.size();
    const auto rounded = isLast ? whole : static_cast<std::uint32_t>(std::lround(sum * whole));
    axis.weights.push_back(std::min(rounded, whole) - before);
    before = std::min(rounded, whole);
  }
}

// The area of a target pixel covers pixels of the picture from start to end.
void addAverage(Axis& axis, double start, double end) {
  const int last = axis.sides.length - 1;
  const int from = std::clamp(static_cast<int>(std::floor(start)), 0, last);
  const int to = std::clamp(static_cast<int>(std::ceil(end)) - 1, from, last);
  std::vector<double> shares;
  for (int at = from; at <= to; ++at) {
    const double covered = std::min(end, at + 1.0) - std::max<double>(start, at);
    shares.push_back(std::max(covered, 0.0) / (end - start));
  }
  addTaps(axis, from, shares);
}

// center: in the picture's pixels, whose own centers are at halves.
void addInterpolation(Axis& axis, double center) {
  const int last = axis.sides.length - 1;
  const double place = std::clamp(center - 0.5, 0.0, static_cast<double>(last));
  const int from = std::min(static_cast<int>(place), std::max(last - 1, 0));
  const double share = place - from;
  if (last == 0) return addTaps(axis, 0, {1});
  addTaps(axis, from, {1 - share, share});
}

}  // namespace

Axis axisOf(const Sides& sides) {
  Axis axis{sides, {}, {}};
  const double step = sides.length / sides.size;
  for (int at = 0; at < sides.count; ++at) {
    const double start = (sides.first + at - sides.start) * step;
    if (sides.isEnlarged()) {
      addInterpolation(axis, start + step / 2);
    } else {
      addAverage(axis, start, start + step);
    }
  }
  return axis;
}

}  // namespace platform::backend::scaling
