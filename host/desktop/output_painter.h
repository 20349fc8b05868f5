// Paints the wallpaper on the outputs of a desktop. Coordinates are pixels of the output. Main
// thread.
#pragma once

#include <chrono>
#include <optional>

#include <cairo.h>

#include "host/desktop/backdrop.h"
#include "host/desktop/wallpaper_picture.h"
#include "host/options/desktop_options.h"
#include "platform/geometry.h"

namespace host {

class OutputPainter {
 public:
  explicit OutputPainter(const DesktopOptions& options)
      : options_(options), backdrop_(options.backdrop) {}

  // Returns the whole pixels of an output that must be painted after a change of the picture or of
  // the area and during a transition, or nothing. area is the rectangle that the wallpaper fills:
  // the output's own, or a larger one that spans several outputs.
  std::optional<cairo_rectangle_int_t> affectedPart(const WallpaperPicture& picture,
                                                    const WallpaperPicture::Change& change,
                                                    const platform::CGRect& area,
                                                    cairo_rectangle_int_t output) const;

  // Paints a part of an output on its surface, which becomes opaque there.
  void paint(const WallpaperPicture& picture, const platform::CGRect& area,
             cairo_surface_t* surface, const cairo_rectangle_int_t& part);

  // Returns true from the first painting of another wallpaper until that of the transition's end.
  bool isFading() const { return before_ != nullptr; }

 private:
  void startTransition(const WallpaperPicture& picture, cairo_surface_t* surface);
  void paintBefore(cairo_t* context);
  void paintPicture(const WallpaperPicture& picture, const platform::CGRect& at,
                    cairo_t* context) const;
  bool isPixelArt(const WallpaperPicture& picture, const platform::CGRect& at) const;

  const DesktopOptions options_;
  Backdrop backdrop_;
  // The area that was painted last.
  platform::CGRect area_;
  unsigned generation_ = 0;
  // During a transition: what the output showed before.
  DrawnSurface before_;
  std::chrono::steady_clock::time_point fadingSince_;
};

}  // namespace host
