#include "host/artwork/app.h"

#include <algorithm>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

struct Entry {
  const char* title;
  const char* day;
  const char* text;
  Color sky;
  Color land;
};

constexpr Entry entries[] = {
    {"First frost", "Monday", "The meadow was white until nine, then all of it was gone.",
     rgb(0xbcd6e6), rgb(0x5c86a6)},
    {"A walk by the lake", "Sunday", "Two herons, one patient angler and hardly any wind.",
     rgb(0xf4c9a4), rgb(0x3f7f86)},
    {"Soup for eight", "Friday", "Pumpkin, ginger, a little orange. Write down the spices!",
     rgb(0xf7d58c), rgb(0xcf7240)},
    {"The old observatory", "Thursday", "They still open the dome by hand on clear nights.",
     rgb(0x6a62a8), rgb(0x2a2857)},
    {"Seeds to order", "Tuesday", "Sweet peas, cornflowers, and the tall marigolds again.",
     rgb(0xdfe8b8), rgb(0x6d9a5b)},
    {"Train to the coast", "Monday", "Left the rain behind after the second tunnel.", rgb(0xf0b4ae),
     rgb(0x8a5286)},
    {"Piano evening", "Saturday", "Slow pieces only, and nobody looked at the time.", rgb(0xd8c4ea),
     rgb(0x6f55a5)},
    {"New boots", "Thursday", "Stiff for the first mile and perfect ever after.", rgb(0xead9c2),
     rgb(0x9a6a4a)},
    {"Ideas for the attic", "Wednesday", "A desk below the window, shelves along the slope.",
     rgb(0xc4e0d8), rgb(0x4a8578)},
    {"Market day", "Saturday", "Plums, a jar of honey and far too many apples.", rgb(0xf6c6b8),
     rgb(0xb54f5c)},
    {"Letter from Ada", "Friday", "Four pages, and a pressed fern between them.", rgb(0xcfe3c4),
     rgb(0x53876b)},
    {"Rain all day", "Thursday", "Good weather for the last chapters of the long book.",
     rgb(0xc3ccdd), rgb(0x5a6788)},
};
constexpr int entryCount = static_cast<int>(std::size(entries));

constexpr Color background = rgb(0xf6f2ec);
constexpr Color titleColor = rgb(0x2b2745);
constexpr Color textColor = rgb(0x8a8599);
constexpr Color accentColor = rgb(0xd9664f);

constexpr double uprightHeaderHeight = 148;
constexpr double wideHeaderHeight = 104;
constexpr double margin = 20;
constexpr double gap = 12;
constexpr double cardHeight = 92;
constexpr double cardRadius = 16;
constexpr double swatchInset = 12;
// A card needs at least this width.
constexpr double minColumnWidth = 330;
constexpr double buttonRadius = 28;
constexpr double padScale = 1.3;
// The shorter side of a pad is at least this long.
constexpr double minPadSide = 600;

void drawHeader(cairo_t* context, Size size, double height, const App& app) {
  setLinearSource(context, {0, 0}, {size.width, height},
                  {{0, rgb(0x2b2a63)}, {0.6, rgb(0x5a3d7c)}, {1, rgb(0x9a5580)}});
  cairo_rectangle(context, 0, 0, size.width, height);
  cairo_fill(context);
  drawText(context, app.name, {margin, height - 42}, {32, Weight::SemiBold, white});
  drawText(context, "Twelve entries this autumn", {margin, height - 18},
           {14, Weight::Medium, white.withAlpha(0.72)});
}

void drawSwatch(cairo_t* context, const Entry& entry, const Rect& box) {
  const SavedState saved(context);
  const double side = box.width;
  addRoundedRect(context, box, side * 0.18);
  cairo_clip(context);
  setSource(context, entry.sky);
  cairo_paint(context);
  fillCircle(context, {box.x + side * 0.68, box.y + side * 0.34}, side * 0.12,
             white.withAlpha(0.8));
  fillCircle(context, {box.x + side * 0.15, box.y + side * 1.15}, side * 0.62,
             entry.land.withAlpha(0.6));
  fillCircle(context, {box.x + side * 0.85, box.y + side * 1.3}, side * 0.7, entry.land);
}

void drawCard(cairo_t* context, const Entry& entry, const Rect& card) {
  drawPlateShadow(context, card, cardRadius, 7);
  fillRoundedRect(context, card, cardRadius, white);
  const double side = card.height - 2 * swatchInset;
  drawSwatch(context, entry, {card.x + swatchInset, card.y + swatchInset, side, side});
  const double left = card.x + side + 2.2 * swatchInset;
  const double right = card.x + card.width - swatchInset - 2;
  const TextStyle title{16, Weight::SemiBold, titleColor};
  const TextStyle text{13.5, Weight::Medium, textColor};
  const TextStyle day{12, Weight::Medium, accentColor};
  drawText(context, fittedText(context, entry.title, title, right - left), {left, card.y + 32},
           title);
  drawText(context, fittedText(context, entry.text, text, right - left), {left, card.y + 53}, text);
  drawText(context, entry.day, {left, card.y + 75}, day);
}

void drawCards(cairo_t* context, Size size, double top) {
  const double room = size.width - 2 * margin;
  const int columns = std::max(1, static_cast<int>((room + gap) / (minColumnWidth + gap)));
  const double width = (room - (columns - 1) * gap) / columns;
  for (int index = 0; index < entryCount; ++index) {
    const int column = index % columns;
    const int row = index / columns;
    const double x = margin + column * (width + gap);
    const double y = top + row * (cardHeight + gap);
    drawCard(context, entries[index], {x, y, width, cardHeight});
  }
}

void drawAddButton(cairo_t* context, Size size) {
  const Point center{size.width - margin - buttonRadius, size.height - 32 - buttonRadius};
  const Rect plate{center.x - buttonRadius, center.y - buttonRadius, 2 * buttonRadius,
                   2 * buttonRadius};
  drawPlateShadow(context, plate, buttonRadius, 10);
  fillCircle(context, center, buttonRadius, accentColor);
  constexpr double arm = 9;
  constexpr double stroke = 2.4;
  fillRoundedRect(context, {center.x - arm, center.y - stroke / 2, 2 * arm, stroke}, stroke / 2,
                  white);
  fillRoundedRect(context, {center.x - stroke / 2, center.y - arm, stroke, 2 * arm}, stroke / 2,
                  white);
}

}  // namespace

void drawApp(cairo_t* context, Size size, const App& app) {
  const SavedState saved(context);
  cairo_rectangle(context, 0, 0, size.width, size.height);
  cairo_clip(context);
  setSource(context, background);
  cairo_paint(context);
  const double scale = std::min(size.width, size.height) < minPadSide ? 1 : padScale;
  cairo_scale(context, scale, scale);
  const Size scaled{size.width / scale, size.height / scale};
  const double header = scaled.width > scaled.height ? wideHeaderHeight : uprightHeaderHeight;
  drawHeader(context, scaled, header, app);
  drawCards(context, scaled, header + margin);
  drawAddButton(context, scaled);
}

}  // namespace artwork
