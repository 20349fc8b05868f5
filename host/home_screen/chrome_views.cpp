#include "host/home_screen/chrome_views.h"

#include <utility>

#include "host/artwork/app.h"
#include "host/artwork/home_icons.h"
#include "host/artwork/key_help.h"
#include "host/artwork/lock_screen.h"
#include "host/artwork/status_bar.h"

namespace host {

void ClockView::setTime(const TimeOfDay& time) {
  if (time == time_) return;
  time_ = time;
  repaint();
}

void StatusBarView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawStatusBar(context, size, time().time);
}

void HomeIconsView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawHomeIcons(context, size, idiom_);
}

const artwork::App* HomeIconsView::appAt(artwork::Point point) const {
  const platform::CGRect area = frame();
  return artwork::appAt(artwork::homeIcons({area.width, area.height}, idiom_),
                        {point.x - area.x, point.y - area.y});
}

void LockScreenView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawLockScreen(context, size, time().time, time().date);
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
