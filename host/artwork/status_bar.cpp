#include "host/artwork/status_bar.h"

#include <algorithm>
#include <numbers>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

constexpr double typeShare = 0.36;
constexpr double minType = 12;
constexpr double maxType = 16;
constexpr double marginShare = 0.6;
constexpr double minMargin = 16;
// As a part of the type size.
constexpr double capHeight = 0.727;
constexpr double shadowShare = 0.13;

constexpr int signalBarCount = 4;
constexpr double charge = 0.78;

// The symbols are measured in units of their common height, from the top right corner.
void drawBattery(cairo_t* context, Point corner, double unit, const Color& color) {
  const double line = 0.1 * unit;
  const Rect body{corner.x - 2.15 * unit, corner.y, 1.95 * unit, unit};
  setSource(context, color.withAlpha(color.alpha * 0.6));
  cairo_set_line_width(context, line);
  addRoundedRect(context,
                 {body.x + line / 2, body.y + line / 2, body.width - line, body.height - line},
                 0.27 * unit);
  cairo_stroke(context);
  fillRoundedRect(context,
                  {corner.x - 0.12 * unit, corner.y + 0.32 * unit, 0.12 * unit, 0.36 * unit},
                  0.06 * unit, color.withAlpha(color.alpha * 0.6));
  const double inset = 2 * line;
  fillRoundedRect(
      context,
      {body.x + inset, body.y + inset, (body.width - 2 * inset) * charge, body.height - 2 * inset},
      0.15 * unit, color);
}

void drawWireless(cairo_t* context, Point corner, double unit, const Color& color) {
  const Point foot{corner.x - 0.72 * unit, corner.y + unit};
  const double half = 0.25 * std::numbers::pi;
  const double up = -0.5 * std::numbers::pi;
  setSource(context, color);
  cairo_set_line_width(context, 0.17 * unit);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
  for (const double radius : {0.9, 0.58}) {
    cairo_new_sub_path(context);
    cairo_arc(context, foot.x, foot.y, radius * unit, up - half, up + half);
    cairo_stroke(context);
  }
  fillCircle(context, {foot.x, foot.y - 0.18 * unit}, 0.16 * unit, color);
}

void drawSignal(cairo_t* context, Point corner, double unit, const Color& color) {
  const double width = 0.24 * unit;
  const double pitch = 0.4 * unit;
  for (int bar = 0; bar < signalBarCount; ++bar) {
    const double height = unit * (0.4 + 0.6 * bar / (signalBarCount - 1));
    const double x = corner.x - width - (signalBarCount - 1 - bar) * pitch;
    fillRoundedRect(context, {x, corner.y + unit - height, width, height}, 0.07 * unit, color);
  }
}

void drawSymbols(cairo_t* context, Point corner, double unit, const Color& color) {
  drawBattery(context, corner, unit, color);
  drawWireless(context, {corner.x - 2.6 * unit, corner.y}, unit, color);
  drawSignal(context, {corner.x - 4.45 * unit, corner.y}, unit, color);
}

}  // namespace

void drawStatusBar(cairo_t* context, Size size, const std::string& text, const Ink& ink) {
  const SavedState saved(context);
  const double type = std::clamp(size.height * typeShare, minType, maxType);
  const double margin = std::max(size.height * marginShare, minMargin);
  const double unit = type * capHeight;
  const double top = (size.height - unit) / 2;
  drawShadowedText(context, text, {margin, top + unit}, {type, Weight::SemiBold, ink.text},
                   ink.shade);
  const Point corner{size.width - margin, top};
  drawShadowCopies(context, type * shadowShare, ink.shade,
                   [&](const Color& faint) { drawSymbols(context, corner, unit, faint); });
  drawSymbols(context, corner, unit, ink.text);
}

}  // namespace artwork
