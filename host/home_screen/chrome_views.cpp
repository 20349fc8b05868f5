#include "host/home_screen/chrome_views.h"

#include <utility>

#include "host/artwork/app.h"
#include "host/artwork/home_icons.h"
#include "host/artwork/key_help.h"
#include "host/artwork/lock_screen.h"
#include "host/artwork/status_bar.h"

namespace host {
namespace {

// Several elements may be adapted to one glimpse, each to the part that is behind it.
const artwork::Ink& inkOn(const Glimpse& behind, const artwork::Rect& area) {
  return artwork::inkOn(behind.brightness(area));
}

}  // namespace

void ClockView::setTime(const TimeOfDay& time) {
  if (time == time_) return;
  time_ = time;
  repaint();
}

void StatusBarView::setLook(bool showsTime, const artwork::Ink& ink) {
  const bool isSame = showsTime == showsTime_ && ink == ink_;
  showsTime_ = showsTime;
  ink_ = ink;
  if (!isSame) repaint();
}

void StatusBarView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawStatusBar(context, size, showsTime_ ? time().time : "Lumora", ink_);
}

void HomeIconsView::adaptTo(const Glimpse& behind) {
  const platform::CGRect area = frame();
  const auto& ink = inkOn(behind, {area.x, area.y, area.width, area.height});
  if (!(std::exchange(ink_, ink) == ink)) repaint();
}

void HomeIconsView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawHomeIcons(context, size, idiom_, ink_);
}

const artwork::App* HomeIconsView::appAt(artwork::Point point) const {
  const platform::CGRect area = frame();
  return artwork::appAt(artwork::homeIcons({area.width, area.height}, idiom_),
                        {point.x - area.x, point.y - area.y});
}

void LockScreenView::adaptTo(const Glimpse& behind) {
  const artwork::Size size{frame().width, frame().height};
  const auto& top = inkOn(behind, artwork::lockScreenTop(size));
  const auto& bottom = inkOn(behind, artwork::lockScreenBottom(size));
  const bool isSame = top == top_ && bottom == bottom_;
  top_ = top;
  bottom_ = bottom;
  if (!isSame) repaint();
}

void LockScreenView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawLockScreen(context, size, time().time, time().date, top_, bottom_);
}

void AppView::show(const artwork::App& app) {
  if (std::exchange(app_, &app) != &app) forgetPainting();
}

void AppView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawApp(context, size, *app_);
}

void KeyHelpView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawKeyHelp(context, size);
}

}  // namespace host
