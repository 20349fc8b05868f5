#include "host/artwork/lock_screen.h"

#include <algorithm>
#include <cmath>

#include "host/artwork/glyphs.h"
#include "host/artwork/painting.h"

namespace artwork {
namespace {

constexpr double kClockShare = 0.235;  // Of the screen's shorter side.
constexpr double kMinClock = 72;
constexpr double kMaxClock = 132;
constexpr double kDateShare = 0.2;  // Of the clock's size.
constexpr double kMinDate = 17;
constexpr double kUprightTop = 0.2;  // Baseline of the clock, of the screen's height.
constexpr double kWideTop = 0.36;

constexpr double kButtonRadius = 26;
constexpr double kButtonMargin = 46;
constexpr double kButtonGlyph = 25;

constexpr double kShadeHeight = 0.34;
constexpr double kShadeAlpha = 0.34;

constexpr Size kHomeBar{134, 5};
constexpr double kHomeBarBottom = 8;

void drawShade(cairo_t* context, Size size, double edge, double inner) {
  setLinearSource(context, {0, edge}, {0, inner},
                  {{0, kBlack.withAlpha(kShadeAlpha)},
                   {0.5, kBlack.withAlpha(kShadeAlpha * 0.36)},
                   {1, kBlack.withAlpha(0)}});
  cairo_rectangle(context, 0, std::min(edge, inner), size.width, std::abs(edge - inner));
  cairo_fill(context);
}

void drawClock(cairo_t* context, Size size, const std::string& time, const std::string& date) {
  const double clock =
      std::clamp(std::min(size.width, size.height) * kClockShare, kMinClock, kMaxClock);
  const double type = std::max(clock * kDateShare, kMinDate);
  const double top = size.height * (size.width > size.height ? kWideTop : kUprightTop);
  const double middle = size.width / 2;
  drawShadowedText(context, time, {middle, top},
                   {clock, Weight::ExtraLight, kWhite, Align::Center});
  drawShadowedText(context, date, {middle, top + type * 2},
                   {type, Weight::Medium, kWhite, Align::Center});
}

void drawButton(cairo_t* context, Point center, Glyph glyph) {
  fillCircle(context, center, kButtonRadius, kBlack.withAlpha(0.28));
  fillCircle(context, center, kButtonRadius, kWhite.withAlpha(0.12));
  drawGlyph(context, glyph, center, kButtonGlyph, kWhite);
}

void drawHomeBar(cairo_t* context, Size size) {
  const Rect bar{(size.width - kHomeBar.width) / 2, size.height - kHomeBarBottom - kHomeBar.height,
                 kHomeBar.width, kHomeBar.height};
  drawPlateShadow(context, bar, kHomeBar.height / 2, 4);
  fillRoundedRect(context, bar, kHomeBar.height / 2, kWhite);
}

}  // namespace

void drawLockScreen(cairo_t* context, Size size, const std::string& time, const std::string& date) {
  const SavedState saved(context);
  drawShade(context, size, 0, size.height * kShadeHeight);
  drawShade(context, size, size.height, size.height * (1 - kShadeHeight));
  drawClock(context, size, time, date);
  const double left = kButtonMargin + kButtonRadius;
  const double low = size.height - kButtonMargin - kButtonRadius;
  drawButton(context, {left, low}, Glyph::Torch);
  drawButton(context, {size.width - left, low}, Glyph::Camera);
  drawShadowedText(context, "swipe up to open", {size.width / 2, size.height - 30},
                   {14, Weight::Medium, kWhite.withAlpha(0.92), Align::Center});
  drawHomeBar(context, size);
}

}  // namespace artwork
