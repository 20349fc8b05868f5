// The views above the wallpaper: status bar, icons, lock screen and an open app. Main thread.
#pragma once

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"
#include "host/home_screen/cached_view.h"
#include "host/home_screen/wall_clock.h"
#include "host/options/idiom.h"
#include "host/wallpaper/glimpse.h"

namespace host {

// A view that shows the time of day.
class ClockView : public CachedView {
 public:
  void setTime(const TimeOfDay& time);

 protected:
  const TimeOfDay& time() const { return time_; }

 private:
  TimeOfDay time_;
};

class StatusBarView : public ClockView {
 public:
  // The lock screen shows the time itself.
  void setLook(bool showsTime, const artwork::Ink& ink);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  bool showsTime_ = true;
  artwork::Ink ink_ = artwork::lightInk;
};

class LockScreenView : public ClockView {
 public:
  // Adapts the colors to what is behind it.
  void adaptTo(const Glimpse& behind);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  artwork::Ink top_ = artwork::lightInk;
  artwork::Ink bottom_ = artwork::lightInk;
};

class HomeIconsView : public CachedView {
 public:
  explicit HomeIconsView(Idiom idiom) : idiom_(idiom) {}

  // Adapts the colors to what is behind it.
  void adaptTo(const Glimpse& behind);

  // Returns the app whose icon is at this point of the screen, or nullptr.
  const artwork::App* appAt(artwork::Point point) const;

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  const Idiom idiom_;
  artwork::Ink ink_ = artwork::lightInk;
};

class AppView : public CachedView {
 public:
  // app must outlive this object.
  void show(const artwork::App& app);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  const artwork::App* app_ = &artwork::usualApp();
};

// The keys and gestures of the window, shown on demand.
class KeyHelpView : public CachedView {
 protected:
  void paint(cairo_t* context, artwork::Size size) override;
};

}  // namespace host
