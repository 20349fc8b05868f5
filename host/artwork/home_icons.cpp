#include "host/artwork/home_icons.h"

#include <algorithm>
namespace artwork {
namespace {

struct GridStyle {
  int uprightColumns;
  int wideColumns;
  // The distance from one row to the next. With less than the least, the icons shrink.
  double minPitch;
  double maxPitch;
  // The space above the first row.
  double top;
  double labelSize;
};

constexpr GridStyle phoneGrid{4, 6, 88, 108, 22, 11.5};
constexpr GridStyle padGrid{5, 6, 120, 190, 48, 13};

// The distance from the icon to the label's baseline, in label sizes.
constexpr double labelDrop = 1.45;
constexpr double dotsHeight = 30;
constexpr double dotRadius = 3.2;
constexpr double dotPitch = 16;
constexpr int pageCount = 3;

// Lengths are multiplied by the scale, which is below 1 where there is no room for all apps.
struct Grid {
  int columns;
  double scale;
  double top;
  double pitch;
  double side;
};

const GridStyle& styleOf(host::Idiom idiom) {
  return idiom == host::Idiom::Pad ? padGrid : phoneGrid;
}

Grid layOut(Size area, const GridStyle& style, double side, int count) {
  constexpr double minGapShare = 0.2;
  const double height = std::max(area.height - dotsHeight, 1.0);
  const int columns = area.width > area.height ? style.wideColumns : style.uprightColumns;
  const int rows = (count + columns - 1) / columns;
  const double pitch = std::min(style.maxPitch, height / rows);
  const double scale =
      std::min({1.0, pitch / style.minPitch, area.width / (columns * side * (1 + minGapShare))});
  const double block = (side + labelDrop * style.labelSize) * scale;
  return {columns, scale, std::min(style.top * scale, (pitch - block) / 2), pitch, side * scale};
}

Grid layOut(Size area, host::Idiom idiom) {
  return layOut(area, styleOf(idiom), iconSide(idiom), static_cast<int>(gridApps(idiom).size()));
}

void drawPageDots(cairo_t* context, Size area, const Ink& ink) {
  const double y = area.height - dotsHeight / 2;
  for (int page = 0; page < pageCount; ++page) {
    const double x = area.width / 2 + (page - (pageCount - 1) / 2.0) * dotPitch;
    setGlowSource(context, {x, y}, 2.4 * dotRadius, ink.shade.withAlpha(0.3));
    addCircle(context, {x, y}, 2.4 * dotRadius);
    cairo_fill(context);
    fillCircle(context, {x, y}, dotRadius, ink.text.withAlpha(page == 0 ? 1 : 0.5));
  }
}

}  // namespace

std::vector<PlacedIcon> homeIcons(Size area, host::Idiom idiom) {
  const auto& [columns, scale, top, pitch, side] = layOut(area, idiom);
  std::vector<PlacedIcon> icons;
  for (const App& app : gridApps(idiom)) {
    const int index = static_cast<int>(icons.size());
    const int row = index / columns;
    const double x = spreadOffset(index % columns, columns, side, area.width);
    icons.push_back({&app, {x, top + row * pitch, side, side}});
  }
  return icons;
}

void drawHomeIcons(cairo_t* context, Size area, host::Idiom idiom, const Ink& ink) {
  const SavedState saved(context);
  const double labelSize = styleOf(idiom).labelSize * layOut(area, idiom).scale;
  const TextStyle label{labelSize, Weight::Medium, ink.text, Align::Center};
  for (const PlacedIcon& icon : homeIcons(area, idiom)) {
    const Rect& plate = icon.plate;
    drawIcon(context, icon);
    drawShadowedText(context, icon.app->name,
                     {plate.x + plate.width / 2, plate.y + plate.height + labelDrop * labelSize},
                     label, ink.shade);
  }
  drawPageDots(context, area, ink);
}

}  // namespace artwork
