#include "host/home_screen/chrome_views.h"

#include "host/artwork/app.h"
#include "host/artwork/home_icons.h"
#include "host/artwork/lock_screen.h"
#include "host/artwork/painting.h"
#include "host/artwork/status_bar.h"

namespace host {
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

}  // namespace

void ClockView::setTime(const TimeOfDay& time) {
  time_ = time;
  forgetPainting();
}

void StatusBarView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawStatusBar(context, size, time().time);
}

void HomeIconsView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawHomeIcons(context, size, idiom_);
}

void LockScreenView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawLockScreen(context, size, time().time, time().date);
}

void AppView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawApp(context, size);
}

void KeyHelpView::paint(cairo_t* context, artwork::Size size) {
  using artwork::Align;
  using artwork::Weight;
  constexpr double plateWidth = 280;
  constexpr double margin = 24;
  constexpr double lineHeight = 28;
  constexpr double radius = 22;
  constexpr double fontSize = 15;
  const double plateHeight = std::size(keyHelp) * lineHeight + 2 * margin;
  const artwork::Rect plate{(size.width - plateWidth) / 2, (size.height - plateHeight) / 2,
                            plateWidth, plateHeight};
  artwork::fillRoundedRect(context, plate, radius, artwork::black.withAlpha(0.86));
  double baseline = plate.y + margin + fontSize;
  for (const auto& [key, effect] : keyHelp) {
    const double left = plate.x + margin;
    artwork::drawText(context, key, {left, baseline},
                      {fontSize, Weight::SemiBold, artwork::white, Align::Left});
    artwork::drawText(context, effect, {left + 64, baseline},
                      {fontSize, Weight::Medium, artwork::white, Align::Left});
    baseline += lineHeight;
  }
}

}  // namespace host
