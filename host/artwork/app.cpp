#include "host/artwork/app.h"

#include <algorithm>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

struct Entry {
  const char* title;
  const char* day;
  const char* text;
  Colour sky;
  Colour land;
};

constexpr Entry kEntries[] = {
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
constexpr int kEntryCount = static_cast<int>(std::size(kEntries));

constexpr Colour kPaper = rgb(0xf6f2ec);
constexpr Colour kInk = rgb(0x2b2745);
constexpr Colour kQuiet = rgb(0x8a8599);
constexpr Colour kAccent = rgb(0xd9664f);

constexpr double kUprightHeader = 148;
constexpr double kWideHeader = 104;
constexpr double kMargin = 20;
constexpr double kGap = 12;
constexpr double kCardHeight = 92;
constexpr double kCardRadius = 16;
constexpr double kSwatchInset = 12;
constexpr double kColumnWidth = 330;  // The least that a card needs.
constexpr double kButtonRadius = 28;
constexpr double kPadScale = 1.3;
constexpr double kPadSide = 600;  // A pad is no narrower than this.

void drawHeader(cairo_t* context, Size size, double height) {
  setLinearSource(context, {0, 0}, {size.width, height},
                  {{0, rgb(0x2b2a63)}, {0.6, rgb(0x5a3d7c)}, {1, rgb(0x9a5580)}});
  cairo_rectangle(context, 0, 0, size.width, height);
  cairo_fill(context);
  drawText(context, "Journal", {kMargin, height - 42}, {32, Weight::SemiBold, kWhite});
  drawText(context, "Twelve entries this autumn", {kMargin, height - 18},
           {14, Weight::Medium, kWhite.withAlpha(0.72)});
}

void drawSwatch(cairo_t* context, const Entry& entry, const Rect& box) {
  const SavedState saved(context);
  const double side = box.width;
  addRoundedRect(context, box, side * 0.18);
  cairo_clip(context);
  setSource(context, entry.sky);
  cairo_paint(context);
  fillCircle(context, {box.x + side * 0.68, box.y + side * 0.34}, side * 0.12,
             kWhite.withAlpha(0.8));
  fillCircle(context, {box.x + side * 0.15, box.y + side * 1.15}, side * 0.62,
             entry.land.withAlpha(0.6));
  fillCircle(context, {box.x + side * 0.85, box.y + side * 1.3}, side * 0.7, entry.land);
}

void drawCard(cairo_t* context, const Entry& entry, const Rect& card) {
  drawPlateShadow(context, card, kCardRadius, 7);
  fillRoundedRect(context, card, kCardRadius, kWhite);
  const double side = card.height - 2 * kSwatchInset;
  drawSwatch(context, entry, {card.x + kSwatchInset, card.y + kSwatchInset, side, side});
  const double left = card.x + side + 2.2 * kSwatchInset;
  const double right = card.x + card.width - kSwatchInset - 2;
  const TextStyle title{16, Weight::SemiBold, kInk};
  const TextStyle text{13.5, Weight::Medium, kQuiet};
  const TextStyle day{12, Weight::Medium, kAccent};
  drawText(context, fittedText(context, entry.title, title, right - left), {left, card.y + 32},
           title);
  drawText(context, fittedText(context, entry.text, text, right - left), {left, card.y + 53}, text);
  drawText(context, entry.day, {left, card.y + 75}, day);
}

void drawCards(cairo_t* context, Size size, double top) {
  const double room = size.width - 2 * kMargin;
  const int columns = std::max(1, static_cast<int>((room + kGap) / (kColumnWidth + kGap)));
  const double width = (room - (columns - 1) * kGap) / columns;
  for (int index = 0; index < kEntryCount; ++index) {
    const int column = index % columns;
    const int row = index / columns;
    const double x = kMargin + column * (width + kGap);
    const double y = top + row * (kCardHeight + kGap);
    drawCard(context, kEntries[index], {x, y, width, kCardHeight});
  }
}

void drawAddButton(cairo_t* context, Size size) {
  const Point center{size.width - kMargin - kButtonRadius, size.height - 32 - kButtonRadius};
  const Rect plate{center.x - kButtonRadius, center.y - kButtonRadius, 2 * kButtonRadius,
                   2 * kButtonRadius};
  drawPlateShadow(context, plate, kButtonRadius, 10);
  fillCircle(context, center, kButtonRadius, kAccent);
  constexpr double kArm = 9;
  constexpr double kStroke = 2.4;
  fillRoundedRect(context, {center.x - kArm, center.y - kStroke / 2, 2 * kArm, kStroke},
                  kStroke / 2, kWhite);
  fillRoundedRect(context, {center.x - kStroke / 2, center.y - kArm, kStroke, 2 * kArm},
                  kStroke / 2, kWhite);
}

}  // namespace

void drawApp(cairo_t* context, Size size) {
  const SavedState saved(context);
  cairo_rectangle(context, 0, 0, size.width, size.height);
  cairo_clip(context);
  setSource(context, kPaper);
  cairo_paint(context);
  const double scale = std::min(size.width, size.height) < kPadSide ? 1 : kPadScale;
  cairo_scale(context, scale, scale);
  const Size scaled{size.width / scale, size.height / scale};
  const double header = scaled.width > scaled.height ? kWideHeader : kUprightHeader;
  drawHeader(context, scaled, header);
  drawCards(context, scaled, header + kMargin);
  drawAddButton(context, scaled);
}

}  // namespace artwork
