#include "platform/linux/views/picture_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "platform/linux/views/cairo_objects.h"

namespace platform::backend {
namespace {

struct DestroyList {
  void operator()(cairo_rectangle_list_t* list) const { cairo_rectangle_list_destroy(list); }
};
using RectangleList = std::unique_ptr<cairo_rectangle_list_t, DestroyList>;

// Makes the context's coordinates pixels until it is destroyed.
class InPixels {
 public:
  explicit InPixels(cairo_t* context) : context_(context) {
    cairo_save(context);
    cairo_identity_matrix(context);
  }
  ~InPixels() { cairo_restore(context_); }
  InPixels(const InPixels&) = delete;
  InPixels& operator=(const InPixels&) = delete;

 private:
  cairo_t* const context_;
};

// Returns true if the context draws on the pixels of an image, and on its own places.
bool drawsOnImage(cairo_t* context) {
  cairo_surface_t* target = cairo_get_target(context);
  if (target != cairo_get_group_target(context)) return false;
  if (cairo_surface_get_type(target) != CAIRO_SURFACE_TYPE_IMAGE) return false;
  double x = 0;
  double y = 0;
  cairo_surface_get_device_offset(target, &x, &y);
  const cairo_format_t format = cairo_image_surface_get_format(target);
  return x == 0 && y == 0 && (format == CAIRO_FORMAT_RGB24 || format == CAIRO_FORMAT_ARGB32);
}

// Returns the rectangle in pixels, or nothing if it is turned.
std::optional<CGRect> inPixels(cairo_t* context, const CGRect& rectangle) {
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  double scaleX = 1;
  double scaleY = 1;
  cairo_surface_get_device_scale(cairo_get_target(context), &scaleX, &scaleY);
  const bool isTurned = matrix.xy != 0 || matrix.yx != 0 || matrix.xx <= 0 || matrix.yy <= 0;
  if (isTurned || scaleX != 1 || scaleY != 1) return std::nullopt;
  return CGRect{rectangle.x * matrix.xx + matrix.x0, rectangle.y * matrix.yy + matrix.y0,
                rectangle.width * matrix.xx, rectangle.height * matrix.yy};
}

// Returns the pixels within the bounds that are completely in the rectangle.
cairo_rectangle_int_t wholePixelsOf(const CGRect& rectangle, const cairo_rectangle_t& bounds) {
  const double left = std::max(bounds.x, std::ceil(rectangle.x));
  const double top = std::max(bounds.y, std::ceil(rectangle.y));
  const double right = std::min(bounds.x + bounds.width, std::floor(rectangle.x + rectangle.width));
  const double bottom =
      std::min(bounds.y + bounds.height, std::floor(rectangle.y + rectangle.height));
  return {static_cast<int>(left), static_cast<int>(top),
          static_cast<int>(std::max(right - left, 0.0)),
          static_cast<int>(std::max(bottom - top, 0.0))};
}

cairo_rectangle_t clipExtents(cairo_t* context) {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
  cairo_clip_extents(context, &left, &top, &right, &bottom);
  return {left, top, right - left, bottom - top};
}

// Returns the pixels that the scaler can draw: those of the clip that the picture fills completely.
// There are none if the picture is not scaled, because Cairo copies it.
std::vector<cairo_rectangle_int_t> scalablePixels(cairo_t* context, cairo_surface_t* picture,
                                                  const CGRect& place) {
  std::vector<cairo_rectangle_int_t> parts;
  if (place.width == cairo_image_surface_get_width(picture) &&
      place.height == cairo_image_surface_get_height(picture)) {
    return parts;
  }
  const InPixels pixels(context);
  const RectangleList clip(cairo_copy_clip_rectangle_list(context));
  // Nothing, if the clip does not consist of rectangles.
  for (int index = 0; index < clip->num_rectangles; ++index) {
    const auto part = wholePixelsOf(place, clip->rectangles[index]);
    if (part.width > 0 && part.height > 0) parts.push_back(part);
  }
  return parts;
}

// Leaves the pixels that the picture fills completely out until the context is restored.
void clipAway(cairo_t* context, const CGRect& place) {
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  cairo_identity_matrix(context);
  const cairo_rectangle_t all = clipExtents(context);
  const auto whole = wholePixelsOf(place, all);
  cairo_rectangle(context, all.x, all.y, all.width, all.height);
  cairo_rectangle(context, whole.x, whole.y, whole.width, whole.height);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_clip(context);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
  cairo_set_matrix(context, &matrix);
}

void drawWithCairo(cairo_t* context, cairo_surface_t* picture, const CGRect& at,
                   const PictureDrawing::Look& look) {
  cairo_rectangle(context, at.x, at.y, at.width, at.height);
  cairo_clip(context);
  const cairo_rectangle_t visible = clipExtents(context);
  if (visible.width <= 0 || visible.height <= 0) return;
  cairo_translate(context, at.x, at.y);
  cairo_scale(context, at.width / cairo_image_surface_get_width(picture),
              at.height / cairo_image_surface_get_height(picture));
  cairo_set_source_surface(context, picture, 0, 0);
  cairo_pattern_t* pattern = cairo_get_source(context);
  // Padding prevents the edge pixels from blending with transparency when the picture is scaled.
  cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
  if (look.isPixelArt) cairo_pattern_set_filter(pattern, CAIRO_FILTER_NEAREST);
  cairo_paint_with_alpha(context, look.alpha);
}

}  // namespace

// Cairo draws what the scaler cannot: turned pictures, rectangles for pixels, and the pixels of the
// screen that are partly outside.
void PictureDrawing::draw(cairo_t* context, const PictureSurface& picture, const CGRect& at,
                          const Look& look) {
  cairo_surface_t* source = picture.surface();
  const auto place = look.isPixelArt ? std::nullopt : inPixels(context, at);
  const auto parts =
      place ? scalablePixels(context, source, *place) : std::vector<cairo_rectangle_int_t>();
  const bool isCopied = picture.isOpaque() && look.alpha >= 1 && drawsOnImage(context);
  cairo_surface_t* target = cairo_get_target(context);
  if (isCopied) cairo_surface_flush(target);
  for (const auto& part : parts) {
    if (isCopied) {
      scale(source, *place, part, target, part.x, part.y);
    } else {
      blend(context, picture, *place, part, look.alpha);
    }
  }
  cairo_save(context);
  if (!parts.empty()) clipAway(context, *place);
  drawWithCairo(context, source, at, look);
  cairo_restore(context);
}

// Scales a part of the picture to a place on the target.
void PictureDrawing::scale(cairo_surface_t* picture, const CGRect& place,
                           const cairo_rectangle_int_t& part, cairo_surface_t* target, int x,
                           int y) {
  constexpr std::ptrdiff_t pixelSize = 4;
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(target);
  scaler_.scale(
      {cairo_image_surface_get_data(picture), cairo_image_surface_get_stride(picture)},
      {cairo_image_surface_get_width(picture), place.x, place.width, part.x, part.width},
      {cairo_image_surface_get_height(picture), place.y, place.height, part.y, part.height},
      {cairo_image_surface_get_data(target) + y * stride + x * pixelSize, stride});
  cairo_surface_mark_dirty_rectangle(target, x, y, part.width, part.height);
}

// Scales bands that fit into the processor's cache and blends them with what is behind.
void PictureDrawing::blend(cairo_t* context, const PictureSurface& picture, const CGRect& place,
                           const cairo_rectangle_int_t& part, double alpha) {
  constexpr int maxRows = 64;
  const InPixels pixels(context);
  const CairoSurface band(cairo_image_surface_create(
      picture.isOpaque() ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, part.width, maxRows));
  if (cairo_surface_status(band.get()) != CAIRO_STATUS_SUCCESS) return;
  for (int row = 0; row < part.height; row += maxRows) {
    const int height = std::min(maxRows, part.height - row);
    cairo_surface_flush(band.get());
    scale(picture.surface(), place, {part.x, part.y + row, part.width, height}, band.get(), 0, 0);
    cairo_set_source_surface(context, band.get(), part.x, part.y + row);
    cairo_save(context);
    cairo_rectangle(context, part.x, part.y + row, part.width, height);
    cairo_clip(context);
    cairo_paint_with_alpha(context, alpha);
    cairo_restore(context);
  }
}

}  // namespace platform::backend
