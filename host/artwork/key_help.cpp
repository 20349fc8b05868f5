#include "host/artwork/key_help.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

struct GestureHelp {
  const char* gesture;
  const char* effect;
};

constexpr GestureHelp gestureHelp[] = {
    {"Swipe up", "unlock, leave an app"},
    {"Tap", "open an app"},
    {"Drag down", "lock, from the top edge"},
};

struct KeyHelp {
  const char* key;
  // Another key that belongs to it, or "".
  const char* other;
  const char* effect;
};

constexpr KeyHelp keyHelp[] = {
    {"L", "", "lock, unlock"},
    {"H", "", "home screen"},
    {"A", "", "open, close an app"},
    {"\u2190", "\u2192", "turn the device"},
    {"\u2191", "\u2193", "upright, upside down"},
    {"S", "", "save a screenshot"},
    {"P", "", "display off, on"},
    {"Q", "", "quit"},
    {"?", "F1", "show or hide this card"},
};

constexpr Color cardColor = rgb(0xfbfaf7);
constexpr Color titleColor = rgb(0x23223a);
constexpr Color textColor = rgb(0x4a495c);
constexpr Color lineColor = rgb(0xe2dfd8);
constexpr Color capColor = rgb(0xffffff);
constexpr Color capEdge = rgb(0xc9c6cf);

constexpr double cardWidth = 304;
constexpr double cardRadius = 26;
// The least distance from the screen's edges.
constexpr double screenMargin = 16;
constexpr double margin = 24;
constexpr double titleSize = 20;
constexpr double titleHeight = 48;
constexpr double rowHeight = 29;
constexpr double gapHeight = 17;
constexpr double textSize = 14;
constexpr double effectIndent = 98;
constexpr double capHeight = 22;
constexpr double capRadius = 6;
constexpr double capGap = 5;

constexpr double cardHeight =
    titleHeight + (std::size(gestureHelp) + std::size(keyHelp)) * rowHeight + gapHeight + margin;

// Draws a key with its left edge at x and returns where the next one begins.
double drawCap(cairo_t* context, const char* key, double x, double middle) {
  const bool isWord = std::strlen(key) > 1 && (key[0] & 0x80) == 0;
  const Rect cap{x, middle - capHeight / 2, isWord ? capHeight * 1.4 : capHeight * 1.1, capHeight};
  fillRoundedRect(context, {cap.x, cap.y + 1.5, cap.width, cap.height}, capRadius, capEdge);
  fillRoundedRect(context, cap, capRadius, capEdge);
  fillRoundedRect(context, {cap.x + 0.75, cap.y + 0.75, cap.width - 1.5, cap.height - 1.5},
                  capRadius - 0.75, capColor);
  drawText(context, key, {cap.x + cap.width / 2, middle + 4.6},
           {12.5, Weight::SemiBold, titleColor, Align::Center});
  return cap.x + cap.width + capGap;
}

void drawEffect(cairo_t* context, const char* effect, double left, double middle) {
  drawText(context, effect, {left + effectIndent, middle + textSize * 0.36},
           {textSize, Weight::Medium, textColor});
}

void drawCard(cairo_t* context, const Rect& card) {
  drawPlateShadow(context, card, cardRadius, 18);
  fillRoundedRect(context, card, cardRadius, cardColor);
  const double left = card.x + margin;
  drawText(context, "At a glance", {left, card.y + 35}, {titleSize, Weight::SemiBold, titleColor});
  double middle = card.y + titleHeight + rowHeight / 2;
  for (const auto& [gesture, effect] : gestureHelp) {
    drawText(context, gesture, {left, middle + textSize * 0.36},
             {textSize, Weight::SemiBold, titleColor});
    drawEffect(context, effect, left, middle);
    middle += rowHeight;
  }
  setSource(context, lineColor);
  cairo_rectangle(context, left, middle - rowHeight / 2 + gapHeight / 2, card.width - 2 * margin,
                  1);
  cairo_fill(context);
  middle += gapHeight;
  for (const auto& [key, other, effect] : keyHelp) {
    const double next = drawCap(context, key, left, middle);
    if (*other != '\0') drawCap(context, other, next, middle);
    drawEffect(context, effect, left, middle);
    middle += rowHeight;
  }
}

}  // namespace

void drawKeyHelp(cairo_t* context, Size size) {
  const SavedState saved(context);
  const double scale = std::min({1.0, size.width / (cardWidth + 2 * screenMargin),
                                 size.height / (cardHeight + 2 * screenMargin)});
  cairo_translate(context, size.width / 2, size.height / 2);
  cairo_scale(context, scale, scale);
  drawCard(context, {-cardWidth / 2, -cardHeight / 2, cardWidth, cardHeight});
}

}  // namespace artwork
