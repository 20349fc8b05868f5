// Paints the wallpaper on the outputs of a desktop. Coordinates are pixels of the output. Main
// thread.
#pragma once

#include <chrono>
#include <optional>

#include <cairo.h>

#include "host/options/desktop_options.h"
#include "host/wallpaper/backdrop.h"
#include "host/wallpaper/wallpaper_picture.h"
#include "platform/geometry.h"
#include "platform/linux/views/frame_replay.h"
#include "platform/linux/views/picture_drawing.h"

namespace host {

class OutputPainter {
 public:
  // options must outlive this object. If their backdrop changes, the next painting shows it.
  explicit OutputPainter(const DesktopOptions& options);

  // Returns the pixels of an output in which the picture differs from the one of the last call, or
  // all if anything else has changed and during a transition. area is the rectangle that the
  // wallpaper fills: the output's own, or a larger one that spans several outputs.
  platform::backend::Region affectedPart(const WallpaperPicture& picture,
                                         const platform::CGRect& area,
                                         const cairo_rectangle_int_t& output);

  // Paints a part of an output on its surface, which becomes opaque there. The part contains
  // everything in which the surface may differ from what it shall show.
  void paint(const WallpaperPicture& picture, const platform::CGRect& area,
             cairo_surface_t* surface, const platform::backend::Region& part);

  // Returns true from the first painting of another wallpaper until that of the transition's end.
  bool isFading() const { return old_ != nullptr; }

 private:
  using Region = platform::backend::Region;

  void paintNew(const WallpaperPicture& picture, cairo_surface_t* surface, const Region& part);
  void startTransition(const WallpaperPicture& picture, cairo_surface_t* surface);
  void paintOld(cairo_t* context);
  bool isPixelArt(const WallpaperPicture& picture, const platform::CGRect& at) const;

  const DesktopOptions& options_;
  Backdrop backdrop_;
  platform::backend::PictureDrawing drawing_;
  platform::backend::FrameReplay replay_;
  // The area that was painted last.
  platform::CGRect area_;
  // Of the last call of affectedPart.
  cairo_rectangle_int_t output_{};
  unsigned frameNumber_ = 0;
  unsigned version_ = 0;
  unsigned generation_ = 0;
  // During a transition: what the output showed before.
  DrawnSurface old_;
  std::chrono::steady_clock::time_point fadingSince_;
};

}  // namespace host
