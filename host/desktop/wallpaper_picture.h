// The picture that the wallpaper shows, for painting it on every output of a desktop. Main thread.
#pragma once

#include <cairo.h>

#include "platform/linux/views/picture_surface.h"
#include "platform/view.h"

namespace host {

class WallpaperPicture {
 public:
  // What has changed since the last look.
  struct Change {
    bool isAll = false;
    // Otherwise, the rows of the picture that have changed.
    platform::backend::PictureSurface::Rows rows;
    bool isNothing() const { return !isAll && rows.first == rows.end; }
  };

  // Looks for the last visible image in the tree. The picture stays as it was while all wallpapers
  // are hidden and while the animated view has no image, which happens between two GIFs. There is
  // none if a wallpaper is shown without an animated view. wallpaper is a number that changes when
  // another wallpaper has been chosen, as far as that is known.
  Change look(platform::UIView& root, unsigned wallpaper);

  // Returns true if the last look at this wallpaper found its picture.
  bool isOf(unsigned wallpaper) const {
    return hasImage_ && !hadGap_ && !isStale_ && wallpaper_ == wallpaper;
  }
  // Returns the picture, with premultiplied pixels, or nullptr if there is none.
  cairo_surface_t* surface() const { return hasImage_ ? surface_.surface() : nullptr; }
  // Returns true if there is none because the animated view has not had an image yet, or because
  // all wallpapers have been hidden so far.
  bool isAwaited() const { return isAwaited_; }
  int width() const { return width_; }
  int height() const { return height_; }
  bool isOpaque() const { return surface_.isOpaque() && alpha_ >= 1; }
  platform::UIViewContentMode contentMode() const { return mode_; }
  double alpha() const { return alpha_; }
  // Returns a number that changes whenever the picture becomes one of another wallpaper: with the
  // number given to look, after a time without an image, or if its size changes.
  unsigned generation() const { return generation_; }

 private:
  Change take(const platform::ImageRef& image, platform::UIViewContentMode mode, double alpha);
  Change takeNothing();

  platform::backend::PictureSurface surface_;
  platform::ImageRef image_;
  bool hasImage_ = false;
  bool hadGap_ = false;
  bool isAwaited_ = false;
  // True if another wallpaper has been chosen while all were hidden: then the view still has an
  // image of the old one when it is shown.
  bool isStale_ = false;
  int width_ = 0;
  int height_ = 0;
  platform::UIViewContentMode mode_ = platform::UIViewContentMode::ScaleToFill;
  double alpha_ = 1;
  unsigned generation_ = 0;
  unsigned wallpaper_ = 0;
};

}  // namespace host
