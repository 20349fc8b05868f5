#include "host/artwork/key_help.h"

#include <iterator>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

struct KeyHelp {
  const char* key;
  const char* effect;
};

constexpr KeyHelp keyHelp[] = {
    {"L", "lock, unlock"},
    {"H", "home screen"},
    {"A", "open, close an app"},
    {"\u2190 \u2192", "turn"},
    {"\u2191 \u2193", "upright, upside down"},
    {"S", "screenshot"},
    {"P", "display off, on"},
    {"Q", "quit"},
    {"?", "these keys"},
};

constexpr double plateWidth = 280;
constexpr double plateRadius = 22;
constexpr double plateAlpha = 0.86;
constexpr double margin = 24;
constexpr double lineHeight = 28;
constexpr double keyWidth = 64;
constexpr double fontSize = 15;

}  // namespace

void drawKeyHelp(cairo_t* context, Size size) {
  const SavedState saved(context);
  const double plateHeight = std::size(keyHelp) * lineHeight + 2 * margin;
  const Rect plate{(size.width - plateWidth) / 2, (size.height - plateHeight) / 2, plateWidth,
                   plateHeight};
  fillRoundedRect(context, plate, plateRadius, black.withAlpha(plateAlpha));
  const double left = plate.x + margin;
  double baseline = plate.y + margin + fontSize;
  for (const auto& [key, effect] : keyHelp) {
    drawText(context, key, {left, baseline}, {fontSize, Weight::SemiBold, white});
    drawText(context, effect, {left + keyWidth, baseline}, {fontSize, Weight::Medium, white});
    baseline += lineHeight;
  }
}

}  // namespace artwork
