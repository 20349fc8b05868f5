#include "host/artwork/dock.h"

#include <algorithm>

#include "host/artwork/icon.h"

namespace artwork {
namespace {

constexpr double kPlateMargin = 8;
constexpr double kCornerShare = 0.3;  // Of the plate's thickness.
constexpr double kFill = 0.24;
constexpr double kRimWidth = 0.75;
constexpr double kPadGap = 22;
constexpr double kLeastGapShare = 0.2;  // Of an icon, before icons become smaller.
// A sideways phone's status bar runs across the end of the dock, which keeps clear of it.
constexpr double kVerticalMargin = 36;

struct Strip {
  double length;
  double thickness;
};

void drawPlate(cairo_t* context, const Rect& plate) {
  const double radius = std::min(plate.width, plate.height) * kCornerShare;
  fillRoundedRect(context, plate, radius, kWhite.withAlpha(kFill));
  const double inset = kRimWidth / 2;
  addRoundedRect(
      context,
      {plate.x + inset, plate.y + inset, plate.width - kRimWidth, plate.height - kRimWidth},
      radius - inset);
  setSource(context, kWhite.withAlpha(kFill));
  cairo_set_line_width(context, kRimWidth);
  cairo_stroke(context);
}

double plateLength(const Strip& strip, int count, bool vertical, bool pad) {
  const double room = strip.length - 2 * (vertical ? kVerticalMargin : kPlateMargin);
  if (!pad) return room;
  return std::min(room, count * (iconSide(pad) + kPadGap) + kPadGap);
}

}  // namespace

void drawDock(cairo_t* context, Size size, bool vertical, bool pad) {
  const SavedState saved(context);
  const Strip strip = vertical ? Strip{size.height, size.width} : Strip{size.width, size.height};
  const std::span<const App> apps = dockApps(pad);
  const int count = static_cast<int>(apps.size());
  const double length = plateLength(strip, count, vertical, pad);
  const double start = (strip.length - length) / 2;
  const double thickness = strip.thickness - 2 * kPlateMargin;
  drawPlate(context, vertical ? Rect{kPlateMargin, start, thickness, length}
                              : Rect{start, kPlateMargin, length, thickness});
  const double side = std::min(iconSide(pad), length / (count * (1 + kLeastGapShare)));
  const double across = (strip.thickness - side) / 2;
  // A phone's icons spread over the whole strip, so that they stand below the grid's columns.
  const bool aligned = !vertical && !pad;
  for (int index = 0; index < count; ++index) {
    const double along = aligned ? spreadOffset(index, count, side, strip.length)
                                 : start + spreadOffset(index, count, side, length);
    drawIcon(context, apps[index], vertical ? Point{across, along} : Point{along, across}, side);
  }
}

}  // namespace artwork
