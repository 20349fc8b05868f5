// The picture that the wallpaper shows, found in a tree of views. Main thread.
#pragma once

#include <optional>

#include <cairo.h>

#include "platform/linux/views/picture_surface.h"
#include "platform/view.h"

namespace host {

class WallpaperPicture {
 public:
  // Looks for the last visible image in the tree. The picture stays as it was while all wallpapers
  // are hidden and while the animated view has no image, which happens between two GIFs. There is
  // none if a wallpaper is shown without an animated view. wallpaper is a number that changes when
  // another wallpaper has been chosen, as far as that is known.
  void look(platform::UIView& root, unsigned wallpaper);

  // Return numbers that grow when the frame changes and when anything else does.
  unsigned frameNumber() const { return number_; }
  unsigned version() const { return version_; }

  // Returns true if the last look at this wallpaper found its picture.
  bool isOf(unsigned wallpaper) const {
    return hasImage_ && !hadGap_ && !isStale_ && wallpaper_ == wallpaper;
  }
  // Returns true if there is a picture.
  bool exists() const { return hasImage_; }
  // Returns the file of the frame, if it is recognizable.
  const std::optional<platform::backend::FileIdentity>& file() const;
  // The next four decode the frame, which takes most of the time that it takes to show it.
  // Returns the picture, with premultiplied pixels, or nullptr if there is none.
  cairo_surface_t* surface() const;
  // Returns the same with what is known of it. Requires that there is a picture.
  const platform::backend::PictureSurface& pixels() const;
  // Returns true if it has no transparent pixels.
  bool isOpaque() const;
  // Returns the pixels that may differ from the frame with the number, if that is the one that was
  // decoded before this; otherwise nothing.
  std::optional<platform::backend::Region> changedSince(unsigned frameNumber) const;
  // Frees the pixels of the decoded frame, until it is decoded again.
  void forgetPixels();
  // Returns true if there is none because the animated view has not had an image yet, or because
  // all wallpapers have been hidden so far.
  bool isAwaited() const { return isAwaited_; }
  int width() const { return width_; }
  int height() const { return height_; }
  platform::UIViewContentMode contentMode() const { return mode_; }
  double alpha() const { return alpha_; }
  // Returns a number that changes whenever the picture becomes one of another wallpaper: with the
  // number given to look, after a time without an image, or if its size changes.
  unsigned generation() const { return generation_; }

 private:
  void take(const platform::ImageRef& image, platform::UIViewContentMode mode, double alpha);
  void takeNothing();

  void decode() const;

  platform::ImageRef image_;
  unsigned number_ = 0;
  unsigned version_ = 0;
  // The decoded frame, its number and that of the one decoded before.
  mutable platform::backend::PictureSurface surface_;
  mutable unsigned decoded_ = 0;
  mutable unsigned decodedBefore_ = 0;
  mutable platform::backend::Region changed_;
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
