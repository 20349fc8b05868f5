#include "host/desktop/output_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/views/picture_placement.h"

namespace host {
namespace {

using platform::CGFloat;
using platform::CGRect;
using platform::backend::Region;

platform::CGSize sizeOf(const WallpaperPicture& picture) {
  return {static_cast<CGFloat>(picture.width()), static_cast<CGFloat>(picture.height())};
}

// Returns where the picture lies on the output.
CGRect placementOf(const WallpaperPicture& picture, const CGRect& area) {
  CGRect at = platform::backend::placementOfPicture(sizeOf(picture), {area.width, area.height},
                                                    picture.contentMode());
  at.x += area.x;
  at.y += area.y;
  return at;
}

bool covers(const CGRect& rectangle, const cairo_rectangle_int_t& part) {
  return rectangle.x <= part.x && rectangle.y <= part.y &&
         rectangle.x + rectangle.width >= part.x + part.width &&
         rectangle.y + rectangle.height >= part.y + part.height;
}

}  // namespace

OutputPainter::OutputPainter(const DesktopOptions& options)
    : options_(options), backdrop_(options.backdrop), replay_(options.maxKeptBytes) {}

Region OutputPainter::affectedPart(const WallpaperPicture& picture, const CGRect& area,
                                   const cairo_rectangle_int_t& output) {
  const unsigned lastFrame = std::exchange(frameNumber_, picture.frameNumber());
  const bool isOther = std::exchange(version_, picture.version()) != picture.version();
  const bool isOnOther = !(backdrop_.options() == options_.backdrop);
  if (isOnOther) backdrop_ = Backdrop(options_.backdrop);
  const auto [x, y, width, height] = std::exchange(output_, output);
  const bool isMoved =
      x != output.x || y != output.y || width != output.width || height != output.height;
  if (isOther || isOnOther || isMoved || !(area == area_) || isFading()) {
    replay_.restart(picture.file());
    return Region(output);
  }
  if (lastFrame == picture.frameNumber()) return {};
  return replay_.next(picture.file(), [&] {
    const auto changed = picture.changedSince(lastFrame);
    return changed ? platform::backend::pixelsShowing(*changed, sizeOf(picture),
                                                      placementOf(picture, area), output)
                   : Region(output);
  });
}

void OutputPainter::paint(const WallpaperPicture& picture, const CGRect& area,
                          cairo_surface_t* surface, const Region& part) {
  startTransition(picture, surface);
  area_ = area;
  const auto paintUnkept = [&](const Region& unkept) { paintNew(picture, surface, unkept); };
  if (isFading()) {
    paintUnkept(part);
  } else {
    replay_.draw(surface, part, paintUnkept);
  }
}

void OutputPainter::paintNew(const WallpaperPicture& picture, cairo_surface_t* surface,
                             const Region& part) {
  const DrawingContext owned(cairo_create(surface));
  cairo_t* context = owned.get();
  clipTo(context, part);
  const bool hasPicture = picture.surface() != nullptr;
  const CGRect at = hasPicture ? placementOf(picture, area_) : CGRect();
  if (!hasPicture || !picture.isOpaque() || !covers(at, part.bounds())) {
    backdrop_.paint(picture, area_, context);
  }
  if (hasPicture) {
    drawing_.draw(context, picture.pixels(), at,
                  {.alpha = picture.alpha(), .isPixelArt = isPixelArt(picture, at)});
  }
  if (isFading()) paintOld(context);
  cairo_surface_flush(surface);
}

// The surface still has what was painted for the last wallpaper.
void OutputPainter::startTransition(const WallpaperPicture& picture, cairo_surface_t* surface) {
  const bool isFirst = area_ == CGRect();
  if (std::exchange(generation_, picture.generation()) == picture.generation() || isFirst) return;
  if (options_.transition == std::chrono::duration<double>::zero()) return;
  old_.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, cairo_image_surface_get_width(surface),
                                        cairo_image_surface_get_height(surface)));
  cairo_t* context = cairo_create(old_.get());
  cairo_set_source_surface(context, surface, 0, 0);
  cairo_paint(context);
  cairo_destroy(context);
  fadingSince_ = std::chrono::steady_clock::now();
}

void OutputPainter::paintOld(cairo_t* context) {
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - fadingSince_;
  const double progress = elapsed / options_.transition;
  if (progress >= 1) {
    old_.reset();
    return;
  }
  cairo_set_source_surface(context, old_.get(), 0, 0);
  cairo_paint_with_alpha(context, 1 - progress);
}

bool OutputPainter::isPixelArt(const WallpaperPicture& picture, const CGRect& at) const {
  if (options_.filter != Filter::Auto) return options_.filter == Filter::Nearest;
  constexpr int maxSideOfPixelArt = 320;
  const CGFloat scale = at.width / picture.width();
  return std::max(picture.width(), picture.height()) <= maxSideOfPixelArt && scale >= 2 &&
         scale == std::round(scale);
}

}  // namespace host
