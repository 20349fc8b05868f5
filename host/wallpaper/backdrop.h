// What a screen shows where the wallpaper's picture leaves it free or is transparent. Main thread.
#pragma once

#include "host/artwork/still_wallpaper.h"
#include "host/options/desktop_options.h"
#include "host/wallpaper/drawn_surface.h"
#include "host/wallpaper/wallpaper_picture.h"
#include "platform/geometry.h"

namespace host {

class Backdrop {
 public:
  // still: what is shown as long as there is no picture.
  explicit Backdrop(const BackdropOptions& options, artwork::Still still = artwork::Still::Shared)
      : options_(options), still_(still) {}

  const BackdropOptions& options() const { return options_; }

  // Fills the area, opaquely.
  void paint(const WallpaperPicture& picture, const platform::CGRect& area, cairo_t* context);

 private:
  void paintStill(const platform::CGRect& area, cairo_t* context) const;
  void paintFile(const platform::CGRect& area, cairo_t* context);
  void makeBlur(const WallpaperPicture& picture);
  // Makes the copy of the file's picture that fills these pixels; it is black if the file
  // cannot be read.
  void makeFilled(const platform::CGRect& pixels);

  BackdropOptions options_;
  artwork::Still still_;
  // A small copy of the first frame, blurred and darkened.
  DrawnSurface blurred_;
  unsigned generation_ = 0;
  // The part of the file's picture that can be seen, in the pixels of the screen.
  DrawnSurface filled_;
};

}  // namespace host
