#include "host/artwork/status_bar.h"

#include <algorithm>
#include <numbers>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

constexpr double kTypeShare = 0.36;
constexpr double kMinType = 12;
constexpr double kMaxType = 16;
constexpr double kMarginShare = 0.6;
constexpr double kMinMargin = 16;
constexpr double kCapHeight = 0.727;  // Of the type size.
constexpr double kShadowShare = 0.13;

constexpr int kSignalBars = 4;
constexpr double kCharge = 0.78;

// The symbols' measures are in units of their common height; x is their right edge, y their top.
void drawBattery(cairo_t* context, Point corner, double unit, const Colour& colour) {
  const double line = 0.1 * unit;
  const Rect body{corner.x - 2.15 * unit, corner.y, 1.95 * unit, unit};
  setSource(context, colour.withAlpha(colour.alpha * 0.6));
  cairo_set_line_width(context, line);
  addRoundedRect(context,
                 {body.x + line / 2, body.y + line / 2, body.width - line, body.height - line},
                 0.27 * unit);
  cairo_stroke(context);
  fillRoundedRect(context,
                  {corner.x - 0.12 * unit, corner.y + 0.32 * unit, 0.12 * unit, 0.36 * unit},
                  0.06 * unit, colour.withAlpha(colour.alpha * 0.6));
  const double inset = 2 * line;
  fillRoundedRect(
      context,
      {body.x + inset, body.y + inset, (body.width - 2 * inset) * kCharge, body.height - 2 * inset},
      0.15 * unit, colour);
}

void drawWireless(cairo_t* context, Point corner, double unit, const Colour& colour) {
  const Point foot{corner.x - 0.72 * unit, corner.y + unit};
  const double half = 0.25 * std::numbers::pi;
  const double up = -0.5 * std::numbers::pi;
  setSource(context, colour);
  cairo_set_line_width(context, 0.17 * unit);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
  for (const double radius : {0.9, 0.58}) {
    cairo_new_sub_path(context);
    cairo_arc(context, foot.x, foot.y, radius * unit, up - half, up + half);
    cairo_stroke(context);
  }
  fillCircle(context, {foot.x, foot.y - 0.18 * unit}, 0.16 * unit, colour);
}

void drawSignal(cairo_t* context, Point corner, double unit, const Colour& colour) {
  const double width = 0.24 * unit;
  const double pitch = 0.4 * unit;
  for (int bar = 0; bar < kSignalBars; ++bar) {
    const double height = unit * (0.4 + 0.6 * bar / (kSignalBars - 1));
    const double x = corner.x - width - (kSignalBars - 1 - bar) * pitch;
    fillRoundedRect(context, {x, corner.y + unit - height, width, height}, 0.07 * unit, colour);
  }
}

void drawSymbols(cairo_t* context, Point corner, double unit, const Colour& colour) {
  drawBattery(context, corner, unit, colour);
  drawWireless(context, {corner.x - 2.6 * unit, corner.y}, unit, colour);
  drawSignal(context, {corner.x - 4.45 * unit, corner.y}, unit, colour);
}

}  // namespace

void drawStatusBar(cairo_t* context, Size size, const std::string& time) {
  const SavedState saved(context);
  const double type = std::clamp(size.height * kTypeShare, kMinType, kMaxType);
  const double margin = std::max(size.height * kMarginShare, kMinMargin);
  const double unit = type * kCapHeight;
  const double top = (size.height - unit) / 2;
  drawShadowedText(context, time, {margin, top + unit}, {type, Weight::SemiBold, kWhite});
  const Point corner{size.width - margin, top};
  drawShadowCopies(context, type * kShadowShare,
                   [&](const Colour& shade) { drawSymbols(context, corner, unit, shade); });
  drawSymbols(context, corner, unit, kWhite);
}

}  // namespace artwork
