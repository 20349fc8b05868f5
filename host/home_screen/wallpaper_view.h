// A wallpaper of the home screen, with the library's animated view as a subview: a landscape, or
// what is shown beside the animation. Main thread.
#pragma once

#include <memory>

#include "host/home_screen/cached_view.h"
#include "host/wallpaper/backdrop.h"
#include "host/wallpaper/glimpse.h"
#include "host/wallpaper/wallpaper_picture.h"

namespace host {

class WallpaperView : public CachedView {
 public:
  explicit WallpaperView(artwork::Still still) : still_(still), backdrop_({}, still) {}

  // How the wallpaper is to be shown.
  struct Choice {
    // A number that changes when another wallpaper has been chosen, as far as that is known.
    unsigned wallpaper = 0;
    BackdropOptions backdrop;
  };

  // Adapts what is beside the animation to it. Call it before the screen is drawn. Returns a
  // glimpse of the wallpaper with its animation: another one if anything but the frame of the
  // animation has changed since the last call. scale: pixels per point.
  std::shared_ptr<const Glimpse> follow(const Choice& choice, double scale);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  // What decides on the painting and on the glimpse.
  struct Look {
    unsigned picture = 0;
    platform::CGRect frame;
    platform::CGRect frameOfAnimation;
    BackdropOptions backdrop;
    friend bool operator==(const Look&, const Look&) = default;
  };

  std::shared_ptr<const Glimpse> makeGlimpse(double scale);

  const artwork::Still still_;
  WallpaperPicture picture_;
  Backdrop backdrop_;
  Look look_;
  std::shared_ptr<const Glimpse> glimpse_;
};

}  // namespace host
