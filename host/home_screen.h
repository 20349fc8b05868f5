// The views in front of the wallpaper: status bar, icons, lock screen and an open app.
#pragma once

#include <string>

#include "host/cached_view.h"
#include "host/wall_clock.h"

namespace host {

class StatusBarView : public CachedView {
 public:
  void setTime(const TimeOfDay& time);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  TimeOfDay time_;
};

class HomeIconsView : public CachedView {
 public:
  explicit HomeIconsView(bool isPad) : isPad_(isPad) {}

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  const bool isPad_;
};

class LockScreenView : public CachedView {
 public:
  void setTime(const TimeOfDay& time);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  TimeOfDay time_;
};

class AppView : public CachedView {
 protected:
  void paint(cairo_t* context, artwork::Size size) override;
};

// The keys of the window, shown on demand.
class KeyHelpView : public CachedView {
 protected:
  void paint(cairo_t* context, artwork::Size size) override;
};

}  // namespace host
