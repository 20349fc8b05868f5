#include "host/artwork/app.h"

#include <algorithm>

#include "host/artwork/app_pages.h"
#include "host/artwork/home_bar.h"
#include "host/artwork/painting.h"

namespace artwork {
namespace {

constexpr Color background = rgb(0xf6f2ec);
constexpr Color barColor = rgb(0x2b2745);

constexpr double uprightHeaderHeight = 148;
constexpr double wideHeaderHeight = 104;
constexpr double padScale = 1.3;
// The shorter side of a pad is at least this long.
constexpr double minPadSide = 600;

constexpr double brightnessOf(const Color& color) {
  return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
}

constexpr Color darkened(const Color& color, double share) {
  return {color.red * share, color.green * share, color.blue * share};
}

// Returns the color by which one knows the app.
const Color& accentOf(const App& app) {
  constexpr double paper = 0.8;
  return brightnessOf(app.bottom) > paper ? app.glyphColor : app.bottom;
}

const char* subtitleOf(Page page) {
  switch (page) {
    case Page::Journal:
      return "Twelve entries this autumn";
    case Page::Messages:
      return "Two unread";
    case Page::Recordings:
      return "Saved for quiet hours";
    case Page::Papers:
      return "Opened lately";
    case Page::Alarms:
      return "Next at 6:45";
    case Page::Pictures:
      return "All of this autumn";
    case Page::Weather:
      return "By the lake";
    case Page::Month:
      return "Six days with plans";
    case Page::Chart:
      return "The last ten days";
    case Page::Switches:
      return "Four of six are on";
  }
  return "";
}

// White text is readable on it.
void drawHeader(cairo_t* context, Size size, double height, const App& app) {
  const Color& accent = accentOf(app);
  setLinearSource(context, {0, 0}, {size.width, height},
                  {{0, darkened(accent, 0.42)}, {1, darkened(accent, 0.82)}});
  cairo_rectangle(context, 0, 0, size.width, height);
  cairo_fill(context);
  drawText(context, app.name, {pageMargin, height - 42}, {32, Weight::SemiBold, white});
  drawText(context, subtitleOf(app.page), {pageMargin, height - 18},
           {14, Weight::Medium, white.withAlpha(0.8)});
}

}  // namespace

void drawApp(cairo_t* context, Size size, const App& app) {
  const SavedState saved(context);
  cairo_rectangle(context, 0, 0, size.width, size.height);
  cairo_clip(context);
  setSource(context, background);
  cairo_paint(context);
  {
    const SavedState unscaled(context);
    const double scale = std::min(size.width, size.height) < minPadSide ? 1 : padScale;
    cairo_scale(context, scale, scale);
    const Size scaled{size.width / scale, size.height / scale};
    const double header = scaled.width > scaled.height ? wideHeaderHeight : uprightHeaderHeight;
    drawHeader(context, scaled, header, app);
    const double top = header + pageMargin;
    drawPage(context, app.page,
             {pageMargin, top, scaled.width - 2 * pageMargin, scaled.height - top}, accentOf(app));
  }
  drawHomeBar(context, size, barColor);
}

}  // namespace artwork
