#include "host/desktop/output_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/views/picture_placement.h"

namespace host {
namespace {

using platform::CGFloat;
using platform::CGRect;

// Returns where the picture lies on the output.
CGRect placementOf(const WallpaperPicture& picture, const CGRect& area) {
  CGRect at = platform::backend::placementOfPicture(
      platform::CGSize{static_cast<CGFloat>(picture.width()),
                       static_cast<CGFloat>(picture.height())},
      {area.width, area.height}, picture.contentMode());
  at.x += area.x;
  at.y += area.y;
  return at;
}

// Returns the pixels that are at least partly in the rectangle, as far as they are in the bounds.
std::optional<cairo_rectangle_int_t> pixelsOf(CGRect rectangle,
                                              const cairo_rectangle_int_t& bounds) {
  const auto within = [](CGFloat value, int first, int length) {
    return static_cast<int>(std::clamp<CGFloat>(value, first, first + length));
  };
  const int left = within(std::floor(rectangle.x), bounds.x, bounds.width);
  const int top = within(std::floor(rectangle.y), bounds.y, bounds.height);
  const int right = within(std::ceil(rectangle.x + rectangle.width), bounds.x, bounds.width);
  const int bottom = within(std::ceil(rectangle.y + rectangle.height), bounds.y, bounds.height);
  if (right <= left || bottom <= top) return std::nullopt;
  return cairo_rectangle_int_t{left, top, right - left, bottom - top};
}

// Returns the pixels of the part that are completely in the rectangle.
std::optional<cairo_rectangle_int_t> wholePixelsOf(const CGRect& rectangle,
                                                   const cairo_rectangle_int_t& part) {
  const int left = std::max(part.x, static_cast<int>(std::ceil(rectangle.x)));
  const int top = std::max(part.y, static_cast<int>(std::ceil(rectangle.y)));
  const int right = std::min(part.x + part.width,
                             static_cast<int>(std::floor(rectangle.x + rectangle.width)));
  const int bottom = std::min(part.y + part.height,
                              static_cast<int>(std::floor(rectangle.y + rectangle.height)));
  if (right <= left || bottom <= top) return std::nullopt;
  return cairo_rectangle_int_t{left, top, right - left, bottom - top};
}

bool covers(const CGRect& rectangle, const cairo_rectangle_int_t& part) {
  return rectangle.x <= part.x && rectangle.y <= part.y &&
         rectangle.x + rectangle.width >= part.x + part.width &&
         rectangle.y + rectangle.height >= part.y + part.height;
}

}  // namespace

OutputPainter::OutputPainter(const DesktopOptions& options)
    : options_(options),
      backdrop_(options.backdrop),
      kept_(std::make_unique<platform::backend::KeptFrames>(options.maxKeptBytes)) {}

std::optional<cairo_rectangle_int_t> OutputPainter::affectedPart(
    const WallpaperPicture& picture, const WallpaperPicture::Change& change, const CGRect& area,
    cairo_rectangle_int_t output) {
  if (!change.isAll && area == area_ && !isFading()) {
    return change.isFrame ? partOfNewFrame(picture, area, output) : std::nullopt;
  }
  kept_->clear();
  shown_ = picture.file();
  before_.reset();
  return output;
}

std::optional<cairo_rectangle_int_t> OutputPainter::partOfNewFrame(
    const WallpaperPicture& picture, const CGRect& area, const cairo_rectangle_int_t& output) {
  const auto last = std::exchange(shown_, picture.file());
  before_.reset();
  if (!shown_ || !kept_->has(*shown_)) {
    const auto part = partOfRows(picture, picture.changedRows(), area, output);
    if (last) before_ = {*last, part ? Rows{part->y, part->y + part->height} : Rows{}};
    return part;
  }
  if (!last || !kept_->has(*last)) return output;
  const Rows rows = kept_->difference(*last, *shown_);
  if (rows.first == rows.end) return std::nullopt;
  return cairo_rectangle_int_t{output.x, rows.first, output.width, rows.end - rows.first};
}

std::optional<cairo_rectangle_int_t> OutputPainter::partOfRows(
    const WallpaperPicture& picture, Rows rows, const CGRect& area,
    const cairo_rectangle_int_t& output) {
  if (rows.first == rows.end) return std::nullopt;
  CGRect at = placementOf(picture, area);
  // Scaling mixes neighboring pixels, of the picture or of the output, whichever are larger.
  const CGFloat scale = at.height / picture.height();
  const CGFloat margin = 2 * std::max(scale, CGFloat{1}) + 1;
  at.height = (rows.end - rows.first) * scale + 2 * margin;
  at.y += rows.first * scale - margin;
  return pixelsOf(at, output);
}

void OutputPainter::paint(const WallpaperPicture& picture, const CGRect& area,
                          cairo_surface_t* surface, const cairo_rectangle_int_t& part) {
  startTransition(picture, surface);
  area_ = area;
  if (shown_ && !isFading() && kept_->has(*shown_)) {
    kept_->draw(*shown_, surface, {part.y, part.y + part.height});
    return;
  }
  paintNew(picture, surface, part);
  if (shown_ && !isFading()) kept_->keep(*shown_, surface, before_);
}

void OutputPainter::paintNew(const WallpaperPicture& picture, cairo_surface_t* surface,
                             const cairo_rectangle_int_t& part) {
  cairo_t* context = cairo_create(surface);
  cairo_rectangle(context, part.x, part.y, part.width, part.height);
  cairo_clip(context);
  const bool hasPicture = picture.surface() != nullptr;
  const CGRect at = hasPicture ? placementOf(picture, area_) : CGRect();
  if (!hasPicture || !picture.isOpaque() || !covers(at, part)) {
    backdrop_.paint(picture, area_, context);
  }
  if (hasPicture) paintPicture(picture, at, surface, part, context);
  if (isFading()) paintOld(context);
  cairo_destroy(context);
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

// Cairo paints what the scaler cannot: transparent pictures, and pixels that are partly outside.
void OutputPainter::paintPicture(const WallpaperPicture& picture, const CGRect& at,
                                 cairo_surface_t* surface, const cairo_rectangle_int_t& part,
                                 cairo_t* context) {
  const bool canScale =
      picture.isOpaque() && !isPixelArt(picture, at) && at.width != picture.width();
  const auto whole = canScale ? wholePixelsOf(at, part) : std::nullopt;
  if (whole) scalePicture(picture, at, surface, *whole);
  if (whole && whole->width == part.width && whole->height == part.height) return;
  cairo_save(context);
  if (whole) {
    cairo_rectangle(context, part.x, part.y, part.width, part.height);
    cairo_rectangle(context, whole->x, whole->y, whole->width, whole->height);
    cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(context);
    cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
  }
  cairo_rectangle(context, at.x, at.y, at.width, at.height);
  cairo_clip(context);
  cairo_translate(context, at.x, at.y);
  cairo_scale(context, at.width / picture.width(), at.height / picture.height());
  cairo_set_source_surface(context, picture.surface(), 0, 0);
  cairo_pattern_t* pattern = cairo_get_source(context);
  // Padding prevents the edge pixels from blending with transparency when the picture is scaled.
  cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
  if (isPixelArt(picture, at)) cairo_pattern_set_filter(pattern, CAIRO_FILTER_NEAREST);
  cairo_paint_with_alpha(context, picture.alpha());
  cairo_restore(context);
}

void OutputPainter::scalePicture(const WallpaperPicture& picture, const CGRect& at,
                                 cairo_surface_t* surface, const cairo_rectangle_int_t& part) {
  cairo_surface_flush(surface);
  cairo_surface_t* source = picture.surface();
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface);
  constexpr int pixelSize = 4;
  scaler_.scale(
      {cairo_image_surface_get_data(source), cairo_image_surface_get_stride(source)},
      {picture.width(), at.x, at.width, part.x, part.width},
      {picture.height(), at.y, at.height, part.y, part.height},
      {cairo_image_surface_get_data(surface) + part.y * stride + part.x * pixelSize, stride});
  cairo_surface_mark_dirty_rectangle(surface, part.x, part.y, part.width, part.height);
}

bool OutputPainter::isPixelArt(const WallpaperPicture& picture, const CGRect& at) const {
  if (options_.filter != Filter::Auto) return options_.filter == Filter::Nearest;
  constexpr int maxSideOfPixelArt = 320;
  const CGFloat scale = at.width / picture.width();
  return std::max(picture.width(), picture.height()) <= maxSideOfPixelArt && scale >= 2 &&
         scale == std::round(scale);
}

}  // namespace host
