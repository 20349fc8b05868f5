#include "host/artwork/icon.h"

#include <algorithm>

namespace artwork {
namespace {

constexpr double phoneIconSide = 60;
constexpr double padIconSide = 76;
constexpr double cornerShare = 0.25;
constexpr double glyphShare = 0.54;
constexpr double shadowShare = 0.1;
constexpr double rimWidth = 0.75;
// How far beside an icon a finger may be.
constexpr double touchMargin = 8;

void strokeRim(cairo_t* context, const Rect& plate, double radius) {
  const double inset = rimWidth / 2;
  setLinearSource(context, {plate.x, plate.y}, {plate.x, plate.y + plate.height},
                  {{0, white.withAlpha(0.35)}, {0.6, white.withAlpha(0)}});
  addRoundedRect(
      context, {plate.x + inset, plate.y + inset, plate.width - rimWidth, plate.height - rimWidth},
      radius - inset);
  cairo_set_line_width(context, rimWidth);
  cairo_stroke(context);
}

}  // namespace

double iconSide(host::Idiom idiom) {
  return idiom == host::Idiom::Pad ? padIconSide : phoneIconSide;
}

double spreadOffset(int index, int count, double side, double length) {
  const double gap = (length - count * side) / (count + 1);
  return gap + index * (side + gap);
}

const App* appAt(std::span<const PlacedIcon> icons, Point point) {
  const auto at = std::ranges::find_if(
      icons, [point](const PlacedIcon& icon) { return icon.plate.contains(point, touchMargin); });
  return at == icons.end() ? nullptr : at->app;
}

void drawIcon(cairo_t* context, const PlacedIcon& icon) {
  const SavedState saved(context);
  const auto& [app, plate] = icon;
  const double side = plate.width;
  const Point topLeft{plate.x, plate.y};
  const double radius = side * cornerShare;
  drawPlateShadow(context, plate, radius, side * shadowShare);
  setLinearSource(context, topLeft, {topLeft.x + side * 0.3, topLeft.y + side},
                  {{0, app->top}, {1, app->bottom}});
  addRoundedRect(context, plate, radius);
  cairo_fill(context);
  strokeRim(context, plate, radius);
  drawGlyph(context, app->glyph, {topLeft.x + side / 2, topLeft.y + side / 2}, side * glyphShare,
            app->glyphColor);
}

}  // namespace artwork
