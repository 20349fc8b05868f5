// What an output shows where the wallpaper's picture leaves it free or is transparent. Main thread.
#pragma once

#include "host/desktop/wallpaper_picture.h"
#include "host/home_screen/drawn_surface.h"
#include "host/options/desktop_options.h"
#include "platform/geometry.h"

namespace host {

class Backdrop {
 public:
  explicit Backdrop(const BackdropOptions& options) : options_(options) {}

  const BackdropOptions& options() const { return options_; }

  // Fills the area, opaquely. Without a picture, paints the landscape of the still wallpaper.
  void paint(const WallpaperPicture& picture, const platform::CGRect& area, cairo_t* context);

 private:
  void makeBlur(const WallpaperPicture& picture);
  // Makes the copy of the file's picture that fills an area of this size; it is black if the file
  // cannot be read.
  void makeFilled(const platform::CGRect& area);

  BackdropOptions options_;
  // A small copy of the first frame, blurred and darkened.
  DrawnSurface blurred_;
  unsigned generation_ = 0;
  // The part of the file's picture that can be seen, in the pixels of the output.
  DrawnSurface filled_;
};

}  // namespace host
