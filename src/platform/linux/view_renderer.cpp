#include "platform/linux/view_renderer.h"

#include <algorithm>
#include <memory>

#include "platform/image_view.h"
#include "platform/linux/drawn_view.h"
#include "platform/linux/picture.h"

namespace platform {
namespace {

struct DestroySurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

std::uint32_t premultipliedPixel(const std::uint8_t* rgba) {
  const std::uint32_t alpha = rgba[3];
  auto scaled = [alpha](std::uint32_t value) { return (value * alpha + 127) / 255; };
  return alpha << 24 | scaled(rgba[0]) << 16 | scaled(rgba[1]) << 8 | scaled(rgba[2]);
}

Surface makeSurface(const UIImage& image) {
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width(), image.height()));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  unsigned char* row = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  const Bytes pixels = pixelsOf(image);
  const std::uint8_t* source = pixels.data();
  for (int y = 0; y < image.height(); ++y, row += stride) {
    auto* target = reinterpret_cast<std::uint32_t*>(row);
    for (int x = 0; x < image.width(); ++x, source += 4) target[x] = premultipliedPixel(source);
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

// Where a picture of this size goes in a view of that size.
CGRect placement(const UIImage& image, CGSize size, UIViewContentMode mode) {
  const CGFloat across = size.width / image.width();
  const CGFloat down = size.height / image.height();
  if (mode == UIViewContentMode::ScaleToFill) return {0, 0, size.width, size.height};
  const bool fits = mode == UIViewContentMode::ScaleAspectFit;
  const CGFloat scale = fits ? std::min(across, down) : std::max(across, down);
  const CGFloat width = image.width() * scale;
  const CGFloat height = image.height() * scale;
  return {(size.width - width) / 2, (size.height - height) / 2, width, height};
}

void drawImage(const UIImageView& view, cairo_t* context, CGSize size) {
  const ImageRef image = view.image();
  if (!image) return;
  const Surface surface = makeSurface(*image);
  if (!surface) return;
  const CGRect at = placement(*image, size, view.contentMode());
  cairo_save(context);
  cairo_translate(context, at.x, at.y);
  cairo_scale(context, at.width / image->width(), at.height / image->height());
  cairo_set_source_surface(context, surface.get(), 0, 0);
  // Padding keeps the edge pixels from blending with nothing when the picture is scaled.
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
  cairo_rectangle(context, 0, 0, image->width(), image->height());
  cairo_fill(context);
  cairo_restore(context);
}

void drawContent(UIView& view, cairo_t* context, CGSize size) {
  const UIColor color = view.backgroundColor();
  if (color.alpha > 0) {
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
    cairo_paint(context);
  }
  if (auto* drawn = dynamic_cast<DrawnView*>(&view)) drawn->draw(context, size);
  if (auto* imageView = dynamic_cast<UIImageView*>(&view)) drawImage(*imageView, context, size);
}

void drawWithSubviews(UIView& view, cairo_t* context, CGRect frame) {
  cairo_save(context);
  cairo_translate(context, frame.x, frame.y);
  cairo_save(context);
  cairo_rectangle(context, 0, 0, frame.width, frame.height);
  cairo_clip(context);
  drawContent(view, context, {frame.width, frame.height});
  cairo_restore(context);
  if (view.clipsToBounds()) {
    cairo_rectangle(context, 0, 0, frame.width, frame.height);
    cairo_clip(context);
  }
  for (const auto& subview : view.subviews()) renderView(*subview, context);
  cairo_restore(context);
}

}  // namespace

void renderView(UIView& view, cairo_t* context) {
  const CGRect frame = view.frame();
  const CGFloat alpha = view.alpha();
  const bool isEmpty = !(frame.width > 0 && frame.height > 0);
  if (view.hidden() || !(alpha > 0) || isEmpty) return;
  if (alpha >= 1) {
    drawWithSubviews(view, context, frame);
    return;
  }
  cairo_push_group(context);
  drawWithSubviews(view, context, frame);
  cairo_pop_group_to_source(context);
  cairo_paint_with_alpha(context, alpha);
}

}  // namespace platform
