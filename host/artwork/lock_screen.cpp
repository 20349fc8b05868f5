#include "host/artwork/lock_screen.h"

#include <algorithm>
#include <cmath>

#include "host/artwork/glyphs.h"
#include "host/artwork/home_bar.h"

namespace artwork {
namespace {

// As a part of the screen's shorter side.
constexpr double clockShare = 0.235;
constexpr double minClock = 72;
constexpr double maxClock = 132;
// As a part of the clock's size.
constexpr double dateShare = 0.2;
constexpr double minDate = 17;
// The clock's baseline, as a part of the screen's height.
constexpr double uprightTop = 0.2;
constexpr double wideTop = 0.36;

constexpr double buttonRadius = 26;
constexpr double buttonMargin = 46;
constexpr double buttonGlyph = 25;

constexpr double shadeHeight = 0.34;
constexpr double shadeAlpha = 0.34;
// Of the part with the hint.
constexpr double bottomHeight = 60;

void drawShade(cairo_t* context, Size size, double edge, double inner, const Color& color) {
  setLinearSource(context, {0, edge}, {0, inner},
                  {{0, color.withAlpha(shadeAlpha)},
                   {0.5, color.withAlpha(shadeAlpha * 0.36)},
                   {1, color.withAlpha(0)}});
  cairo_rectangle(context, 0, std::min(edge, inner), size.width, std::abs(edge - inner));
  cairo_fill(context);
}

void drawClock(cairo_t* context, Size size, const std::string& time, const std::string& date,
               const Ink& ink) {
  const double clock =
      std::clamp(std::min(size.width, size.height) * clockShare, minClock, maxClock);
  const double type = std::max(clock * dateShare, minDate);
  const double top = size.height * (size.width > size.height ? wideTop : uprightTop);
  const double middle = size.width / 2;
  drawShadowedText(context, time, {middle, top},
                   {clock, Weight::ExtraLight, ink.text, Align::Center}, ink.shade);
  drawShadowedText(context, date, {middle, top + type * 2},
                   {type, Weight::Medium, ink.text, Align::Center}, ink.shade);
}

void drawButton(cairo_t* context, Point center, Glyph glyph) {
  fillCircle(context, center, buttonRadius, black.withAlpha(0.28));
  fillCircle(context, center, buttonRadius, white.withAlpha(0.12));
  drawGlyph(context, glyph, center, buttonGlyph, white);
}

}  // namespace

Rect lockScreenTop(Size screen) {
  return {0, 0, screen.width, screen.height * shadeHeight};
}

Rect lockScreenBottom(Size screen) {
  return {0, screen.height - bottomHeight, screen.width, bottomHeight};
}

void drawLockScreen(cairo_t* context, Size size, const std::string& time, const std::string& date,
                    const Ink& top, const Ink& bottom) {
  const SavedState saved(context);
  drawShade(context, size, 0, size.height * shadeHeight, top.shade);
  drawShade(context, size, size.height, size.height * (1 - shadeHeight), bottom.shade);
  drawClock(context, size, time, date, top);
  const double left = buttonMargin + buttonRadius;
  const double low = size.height - buttonMargin - buttonRadius;
  drawButton(context, {left, low}, Glyph::Flashlight);
  drawButton(context, {size.width - left, low}, Glyph::Camera);
  drawShadowedText(context, "swipe up to open", {size.width / 2, size.height - 30},
                   {14, Weight::Medium, bottom.text.withAlpha(0.92), Align::Center}, bottom.shade);
  drawHomeBar(context, size, bottom.text);
}

}  // namespace artwork
