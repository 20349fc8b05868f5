// Paints the wallpaper on the outputs of a desktop. Coordinates are pixels of the output. Main
// thread.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include <cairo.h>

#include "host/desktop/backdrop.h"
#include "host/desktop/wallpaper_picture.h"
#include "host/options/desktop_options.h"
#include "platform/geometry.h"
#include "platform/linux/images/scaling/scaler.h"
#include "platform/linux/views/kept_frames.h"

namespace host {

class OutputPainter {
 public:
  explicit OutputPainter(const DesktopOptions& options);

  // Returns the whole pixels of an output that must be painted after a change of the picture or of
  // the area and during a transition, or nothing. area is the rectangle that the wallpaper fills:
  // the output's own, or a larger one that spans several outputs.
  std::optional<cairo_rectangle_int_t> affectedPart(const WallpaperPicture& picture,
                                                    const WallpaperPicture::Change& change,
                                                    const platform::CGRect& area,
                                                    cairo_rectangle_int_t output);

  // Paints a part of an output on its surface, which becomes opaque there. The part contains
  // everything in which the surface may differ from what it shall show.
  void paint(const WallpaperPicture& picture, const platform::CGRect& area,
             cairo_surface_t* surface, const cairo_rectangle_int_t& part);

  // Returns true from the first painting of another wallpaper until that of the transition's end.
  bool isFading() const { return old_ != nullptr; }

 private:
  using Rows = platform::backend::KeptFrames::Rows;

  std::optional<cairo_rectangle_int_t> partOfNewFrame(const WallpaperPicture& picture,
                                                      const platform::CGRect& area,
                                                      const cairo_rectangle_int_t& output);
  static std::optional<cairo_rectangle_int_t> partOfRows(const WallpaperPicture& picture, Rows rows,
                                                         const platform::CGRect& area,
                                                         const cairo_rectangle_int_t& output);
  void paintNew(const WallpaperPicture& picture, cairo_surface_t* surface,
                const cairo_rectangle_int_t& part);
  void startTransition(const WallpaperPicture& picture, cairo_surface_t* surface);
  void paintOld(cairo_t* context);
  void paintPicture(const WallpaperPicture& picture, const platform::CGRect& at,
                    cairo_surface_t* surface, const cairo_rectangle_int_t& part, cairo_t* context);
  void scalePicture(const WallpaperPicture& picture, const platform::CGRect& at,
                    cairo_surface_t* surface, const cairo_rectangle_int_t& part);
  bool isPixelArt(const WallpaperPicture& picture, const platform::CGRect& at) const;

  const DesktopOptions options_;
  Backdrop backdrop_;
  platform::backend::scaling::Scaler scaler_;
  std::unique_ptr<platform::backend::KeptFrames> kept_;
  // The file of the last frame, and in which rows the output differs from the frame before.
  std::optional<platform::backend::FileIdentity> shown_;
  std::optional<platform::backend::KeptFrames::Before> before_;
  // The area that was painted last.
  platform::CGRect area_;
  unsigned generation_ = 0;
  // During a transition: what the output showed before.
  DrawnSurface old_;
  std::chrono::steady_clock::time_point fadingSince_;
};

}  // namespace host
