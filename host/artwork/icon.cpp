#include "host/artwork/icon.h"

namespace artwork {
namespace {

constexpr double kPhoneSide = 60;
constexpr double kPadSide = 76;
constexpr double kCornerShare = 0.25;
constexpr double kGlyphShare = 0.54;
constexpr double kShadowShare = 0.1;
constexpr double kRimWidth = 0.75;

void strokeRim(cairo_t* context, const Rect& plate, double radius) {
  const double inset = kRimWidth / 2;
  setLinearSource(context, {plate.x, plate.y}, {plate.x, plate.y + plate.height},
                  {{0, kWhite.withAlpha(0.35)}, {0.6, kWhite.withAlpha(0)}});
  addRoundedRect(
      context,
      {plate.x + inset, plate.y + inset, plate.width - kRimWidth, plate.height - kRimWidth},
      radius - inset);
  cairo_set_line_width(context, kRimWidth);
  cairo_stroke(context);
}

}  // namespace

double iconSide(bool pad) {
  return pad ? kPadSide : kPhoneSide;
}

double spreadOffset(int index, int count, double side, double length) {
  const double gap = (length - count * side) / (count + 1);
  return gap + index * (side + gap);
}

void drawIcon(cairo_t* context, const App& app, Point topLeft, double side) {
  const SavedState saved(context);
  const Rect plate{topLeft.x, topLeft.y, side, side};
  const double radius = side * kCornerShare;
  drawPlateShadow(context, plate, radius, side * kShadowShare);
  setLinearSource(context, topLeft, {topLeft.x + side * 0.3, topLeft.y + side},
                  {{0, app.top}, {1, app.bottom}});
  addRoundedRect(context, plate, radius);
  cairo_fill(context);
  strokeRim(context, plate, radius);
  drawGlyph(context, app.glyph, {topLeft.x + side / 2, topLeft.y + side / 2}, side * kGlyphShare,
            app.ink);
}

}  // namespace artwork
