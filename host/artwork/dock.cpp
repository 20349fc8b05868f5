#include "host/artwork/dock.h"

#include <algorithm>

namespace artwork {
namespace {

constexpr double plateMargin = 8;
// As a part of the plate's thickness.
constexpr double cornerShare = 0.3;
constexpr double plateAlpha = 0.18;
constexpr double rimWidth = 0.75;
constexpr double padGap = 22;
// As a part of an icon's side. Icons shrink if there is no room for such gaps.
constexpr double minGapShare = 0.2;
// The status bar of a phone on its side covers the end of the dock, so nothing is drawn there.
constexpr double columnEndMargin = 36;

struct Strip {
  double length;
  double thickness;
};

void drawPlate(cairo_t* context, const Rect& plate, const Color& tint,
               const std::function<void()>& drawBehind) {
  const double radius = std::min(plate.width, plate.height) * cornerShare;
  {
    const SavedState saved(context);
    addRoundedRect(context, plate, radius);
    cairo_clip(context);
    drawBehind();
  }
  fillRoundedRect(context, plate, radius, tint.withAlpha(plateAlpha));
  const double inset = rimWidth / 2;
  addRoundedRect(
      context, {plate.x + inset, plate.y + inset, plate.width - rimWidth, plate.height - rimWidth},
      radius - inset);
  setSource(context, tint.withAlpha(plateAlpha));
  cairo_set_line_width(context, rimWidth);
  cairo_stroke(context);
}

double plateLength(const Strip& strip, int count, DockEdge edge, host::Idiom idiom) {
  const double endMargin = edge == DockEdge::Right ? columnEndMargin : plateMargin;
  const double room = strip.length - 2 * endMargin;
  if (idiom == host::Idiom::Phone) return room;
  return std::min(room, count * (iconSide(idiom) + padGap) + padGap);
}

struct Layout {
  Rect plate;
  std::vector<PlacedIcon> icons;
};

Layout layOut(Size size, DockEdge edge, host::Idiom idiom) {
  const bool isColumn = edge == DockEdge::Right;
  const Strip strip = isColumn ? Strip{size.height, size.width} : Strip{size.width, size.height};
  const std::span<const App> apps = dockApps(idiom);
  const int count = static_cast<int>(apps.size());
  const double length = plateLength(strip, count, edge, idiom);
  const double start = (strip.length - length) / 2;
  const double thickness = strip.thickness - 2 * plateMargin;
  Layout layout{isColumn ? Rect{plateMargin, start, thickness, length}
                         : Rect{start, plateMargin, length, thickness},
                {}};
  const double side = std::min(iconSide(idiom), length / (count * (1 + minGapShare)));
  const double across = (strip.thickness - side) / 2;
  // On a phone the icons spread over the whole strip, to line up with the grid's columns.
  const bool isAligned = !isColumn && idiom == host::Idiom::Phone;
  for (int index = 0; index < count; ++index) {
    const double along = isAligned ? spreadOffset(index, count, side, strip.length)
                                   : start + spreadOffset(index, count, side, length);
    layout.icons.push_back(
        {&apps[static_cast<std::size_t>(index)],
         isColumn ? Rect{across, along, side, side} : Rect{along, across, side, side}});
  }
  return layout;
}

}  // namespace

std::vector<PlacedIcon> dockIcons(Size size, DockEdge edge, host::Idiom idiom) {
  return layOut(size, edge, idiom).icons;
}

void drawDock(cairo_t* context, Size size, DockEdge edge, host::Idiom idiom, const Color& tint,
              const std::function<void()>& drawBehind) {
  const SavedState saved(context);
  const Layout layout = layOut(size, edge, idiom);
  drawPlate(context, layout.plate, tint, drawBehind);
  for (const PlacedIcon& icon : layout.icons) drawIcon(context, icon);
}

}  // namespace artwork
