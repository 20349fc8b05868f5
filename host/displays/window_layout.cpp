#include "host/displays/window_layout.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

struct OuterSize {
  double width;
  double height;
};

OuterSize outerSize(platform::CGSize screen) {
  return {screen.width + 2 * deviceFrame, screen.height + 2 * deviceFrame};
}

// Whole scales draw sharper, so a window that lacks a part of a pixel has them, too.
double rounded(double scale, const OuterSize& outer) {
  const double whole = std::round(scale);
  const bool isNear = std::abs(scale - whole) * std::max(outer.width, outer.height) < 1;
  return isNear && whole > 0 ? whole : scale;
}

int pixels(double length) {
  return std::max(static_cast<int>(std::lround(length)), 1);
}

}  // namespace

DevicePlace placeDevice(platform::CGSize screen, int width, int height,
                        std::optional<double> maxScale) {
  const OuterSize outer = outerSize(screen);
  double scale = rounded(std::min(width / outer.width, height / outer.height), outer);
  if (maxScale) scale = std::min(scale, *maxScale);
  const int across = pixels(screen.width * scale);
  const int down = pixels(screen.height * scale);
  return {scale, {(width - across) / 2, (height - down) / 2, across, down}};
}

WindowSize windowSize(platform::CGSize screen, double scale) {
  const OuterSize outer = outerSize(screen);
  return {pixels(outer.width * scale), pixels(outer.height * scale)};
}

double fittingScale(platform::CGSize screen, WindowSize room, double wanted) {
  const OuterSize outer = outerSize(screen);
  return std::min({wanted, room.width / outer.width, room.height / outer.height});
}

}  // namespace host
