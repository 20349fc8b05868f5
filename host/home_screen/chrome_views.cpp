#include "host/home_screen/chrome_views.h"

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

void LockScreenView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawLockScreen(context, size, time().time, time().date);
}

void AppView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawApp(context, size);
}

void KeyHelpView::paint(cairo_t* context, artwork::Size size) {
  artwork::drawKeyHelp(context, size);
}

}  // namespace host
