#include "host/artwork/home_icons.h"

#include <algorithm>
namespace artwork {
namespace {

struct GridStyle {
  int uprightColumns;
  int wideColumns;
  // The distance from one row to the next.
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

struct Grid {
  int columns;
  int rows;
  double top;
  double pitch;
};

const GridStyle& styleOf(host::Idiom idiom) {
  return idiom == host::Idiom::Pad ? padGrid : phoneGrid;
}

Grid layOut(Size area, const GridStyle& style, double side, int count) {
  const double height = area.height - dotsHeight;
  const bool isWide = area.width > area.height;
  const int columns = isWide ? style.wideColumns : style.uprightColumns;
  const int fitting = std::max(1, static_cast<int>(height / style.minPitch));
  const int rows = std::min(fitting, (count + columns - 1) / columns);
  const double block = side + labelDrop * style.labelSize;
  const double pitch = std::min(style.maxPitch, height / rows);
  return {columns, rows, std::min(style.top, (pitch - block) / 2), pitch};
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
  const std::span<const App> apps = gridApps(idiom);
  const double side = iconSide(idiom);
  const Grid grid = layOut(area, styleOf(idiom), side, static_cast<int>(apps.size()));
  const int count = std::min(static_cast<int>(apps.size()), grid.columns * grid.rows);
  std::vector<PlacedIcon> icons;
  for (int index = 0; index < count; ++index) {
    const double x = spreadOffset(index % grid.columns, grid.columns, side, area.width);
    const double y = grid.top + index / grid.columns * grid.pitch;
    icons.push_back({&apps[static_cast<std::size_t>(index)], {x, y, side, side}});
  }
  return icons;
}

void drawHomeIcons(cairo_t* context, Size area, host::Idiom idiom, const Ink& ink) {
  const SavedState saved(context);
  const double labelSize = styleOf(idiom).labelSize;
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
