#include "host/artwork/app_pages.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "host/artwork/app_entries.h"
#include "host/artwork/glyphs.h"

namespace artwork {
namespace {

constexpr Color titleColor = rgb(0x2b2745);
constexpr Color textColor = rgb(0x8a8599);

constexpr double gap = 12;
constexpr double cardHeight = 92;
constexpr double cardRadius = 16;
constexpr double swatchInset = 12;
// A card needs at least this width.
constexpr double minColumnWidth = 330;

void drawPlate(cairo_t* context, const Rect& plate) {
  drawPlateShadow(context, plate, cardRadius, 7);
  fillRoundedRect(context, plate, cardRadius, white);
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

void drawCard(cairo_t* context, const Entry& entry, const Rect& card, const Color& accent) {
  drawPlate(context, card);
  const double side = card.height - 2 * swatchInset;
  drawSwatch(context, entry, {card.x + swatchInset, card.y + swatchInset, side, side});
  const double left = card.x + side + 2.2 * swatchInset;
  const double right = card.x + card.width - swatchInset - 2;
  const TextStyle title{16, Weight::SemiBold, titleColor};
  const TextStyle text{13.5, Weight::Medium, textColor};
  const TextStyle day{12, Weight::Medium, accent};
  drawText(context, fittedText(context, entry.title, title, right - left), {left, card.y + 32},
           title);
  drawText(context, fittedText(context, entry.text, text, right - left), {left, card.y + 53}, text);
  drawText(context, entry.day, {left, card.y + 75}, day);
}

void drawEntries(cairo_t* context, Page page, const Rect& area, const Color& accent) {
  const int columns = std::max(1, static_cast<int>((area.width + gap) / (minColumnWidth + gap)));
  const double width = (area.width - (columns - 1) * gap) / columns;
  int index = 0;
  for (const Entry& entry : entriesOf(page)) {
    const int row = index / columns;
    const double x = area.x + index % columns * (width + gap);
    const double y = area.y + row * (cardHeight + gap);
    drawCard(context, entry, {x, y, width, cardHeight}, accent);
    ++index;
  }
}

void drawPictures(cairo_t* context, const Rect& area) {
  constexpr double minSide = 104;
  constexpr double pictureGap = 6;
  const int columns = std::max(1, static_cast<int>(area.width / minSide));
  const double side = (area.width - (columns - 1) * pictureGap) / columns;
  const auto entries = entriesOf(Page::Journal);
  const int count = columns * (static_cast<int>(area.height / side) + 1);
  for (int index = 0; index < count; ++index) {
    // Neighbors differ, also from row to row.
    const Entry& entry = entries[static_cast<std::size_t>(index * 5 % 12)];
    const int row = index / columns;
    drawSwatch(context, entry,
               {area.x + index % columns * (side + pictureGap), area.y + row * (side + pictureGap),
                side, side});
  }
}

void drawWeather(cairo_t* context, const Rect& area, const Color& accent) {
  struct Day {
    const char* name;
    int low;
    int high;
  };
  constexpr Day days[] = {
      {"Today", 4, 12}, {"Tomorrow", 6, 14}, {"Then", 3, 9}, {"Later", -1, 7}, {"Weekend", 2, 11}};
  constexpr double nowHeight = 150;
  constexpr double rowHeight = 52;
  const double middle = area.x + area.width / 2;
  drawGlyph(context, Glyph::SunAndCloud, {middle - 62, area.y + 66}, 92, accent);
  drawText(context, "12\u00b0", {middle + 4, area.y + 92}, {76, Weight::ExtraLight, titleColor});
  drawText(context, "Clear until the evening", {middle, area.y + 132},
           {15, Weight::Medium, textColor, Align::Center});
  const Rect plate{area.x, area.y + nowHeight, area.width, std::size(days) * rowHeight + gap};
  drawPlate(context, plate);
  const double left = plate.x + area.width * 0.42;
  const double room = area.width * 0.36;
  double y = plate.y + gap / 2 + rowHeight / 2;
  for (const Day& day : days) {
    drawText(context, day.name, {plate.x + 18, y + 5}, {16, Weight::SemiBold, titleColor});
    const auto at = [&](int degrees) { return left + room * (degrees + 2) / 17; };
    fillRoundedRect(context, {left, y - 3, room, 6}, 3, textColor.withAlpha(0.18));
    fillRoundedRect(context, {at(day.low), y - 3, at(day.high) - at(day.low), 6}, 3, accent);
    drawText(context, std::to_string(day.high) + "\u00b0", {plate.x + area.width - 18, y + 5},
             {16, Weight::Medium, textColor, Align::Right});
    y += rowHeight;
  }
}

void drawMonth(cairo_t* context, const Rect& area, const Color& accent) {
  constexpr int daysOfWeek = 7;
  constexpr int daysOfMonth = 31;
  constexpr int busyDays[] = {3, 8, 9, 16, 22, 27};
  const double pitch = area.width / daysOfWeek;
  const double height = std::min(pitch, 62.0);
  drawPlate(context, {area.x, area.y, area.width, 5 * height + gap});
  for (int day = 1; day <= daysOfMonth; ++day) {
    const int week = (day - 1) / daysOfWeek;
    const Point center{area.x + ((day - 1) % daysOfWeek + 0.5) * pitch,
                       area.y + gap / 2 + (week + 0.5) * height};
    const bool isBusy = std::ranges::find(busyDays, day) != std::end(busyDays);
    if (isBusy) fillCircle(context, center, 17, accent);
    drawText(context, std::to_string(day), {center.x, center.y + 5.5},
             {16, Weight::Medium, isBusy ? white : titleColor, Align::Center});
  }
}

void drawChart(cairo_t* context, const Rect& area, const Color& accent) {
  constexpr double values[] = {0.3, 0.42, 0.36, 0.5, 0.47, 0.62, 0.55, 0.7, 0.66, 0.82};
  constexpr double height = 240;
  constexpr double inset = 22;
  const Rect plate{area.x, area.y, area.width, height};
  drawPlate(context, plate);
  for (int line = 0; line < 4; ++line) {
    fillRoundedRect(context,
                    {plate.x + inset, plate.y + 48 + line * 48, plate.width - 2 * inset, 1}, 0.5,
                    textColor.withAlpha(0.25));
  }
  const double step = (plate.width - 2 * inset) / (std::size(values) - 1);
  for (std::size_t at = 0; at < std::size(values); ++at) {
    cairo_line_to(context, plate.x + inset + static_cast<double>(at) * step,
                  plate.y + height - inset - values[at] * (height - 2 * inset));
  }
  setSource(context, accent);
  cairo_set_line_width(context, 3);
  cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
  cairo_stroke(context);
}

void drawSwitches(cairo_t* context, const Rect& area, const Color& accent) {
  struct Switch {
    const char* name;
    bool isOn;
  };
  constexpr Switch switches[] = {{"Moving wallpaper", true},  {"Sounds", true},
                                 {"Night light", false},      {"Large text", false},
                                 {"Notes when locked", true}, {"Find this device", true}};
  constexpr double rowHeight = 54;
  constexpr Size knob{46, 28};
  drawPlate(context, {area.x, area.y, area.width, std::size(switches) * rowHeight});
  double y = area.y + rowHeight / 2;
  for (const auto& [name, isOn] : switches) {
    const Rect track{area.x + area.width - 16 - knob.width, y - knob.height / 2, knob.width,
                     knob.height};
    drawText(context, name, {area.x + 18, y + 5.5}, {16, Weight::Medium, titleColor});
    fillRoundedRect(context, track, knob.height / 2, isOn ? accent : textColor.withAlpha(0.3));
    fillCircle(context, {isOn ? track.x + knob.width - 14 : track.x + 14, y}, 12, white);
    y += rowHeight;
  }
}

}  // namespace

void drawPage(cairo_t* context, Page page, const Rect& area, const Color& accent) {
  switch (page) {
    case Page::Pictures:
      return drawPictures(context, area);
    case Page::Weather:
      return drawWeather(context, area, accent);
    case Page::Month:
      return drawMonth(context, area, accent);
    case Page::Chart:
      return drawChart(context, area, accent);
    case Page::Switches:
      return drawSwitches(context, area, accent);
    default:
      return drawEntries(context, page, area, accent);
  }
}

}  // namespace artwork
