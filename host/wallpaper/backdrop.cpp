#include "host/wallpaper/backdrop.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <fcntl.h>

#include "host/wallpaper/blurred_copy.h"
#include "platform/image_source.h"
#include "platform/linux/files/data.h"
#include "platform/linux/views/picture_surface.h"

namespace host {
namespace {

using platform::CGRect;

// Scales the surface so that it just fills the area, and paints its middle.
void fillWith(cairo_surface_t* surface, const CGRect& area, cairo_filter_t filter,
              cairo_t* context) {
  const double width = cairo_image_surface_get_width(surface);
  const double height = cairo_image_surface_get_height(surface);
  const double scale = std::max(area.width / width, area.height / height);
  cairo_save(context);
  cairo_translate(context, area.x + (area.width - width * scale) / 2,
                  area.y + (area.height - height * scale) / 2);
  cairo_scale(context, scale, scale);
  cairo_set_source_surface(context, surface, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(context), filter);
  cairo_paint(context);
  cairo_restore(context);
}

// Returns the first image of the file, or nullptr.
platform::ImageRef imageInFile(const std::string& path) {
  // The file is the user's, not one of the device.
  auto file = platform::backend::openFileAt(AT_FDCWD, path);
  if (!file) return nullptr;
  const auto source =
      platform::CGImageSource::createWithData(platform::backend::dataOfFile(std::move(*file)));
  return source ? source->createImageAtIndex(0) : nullptr;
}

}  // namespace

void Backdrop::paint(const WallpaperPicture& picture, const CGRect& area, cairo_t* context) {
  if (options_.kind == BackdropKind::Still || !picture.exists()) return paintStill(area, context);
  if (options_.kind == BackdropKind::Color) {
    cairo_set_source_rgb(context, options_.red, options_.green, options_.blue);
    cairo_paint(context);
    return;
  }
  if (options_.kind == BackdropKind::File) return paintFile(area, context);
  if (!blurred_ || generation_ != picture.generation()) {
    if (picture.surface() == nullptr) return paintStill(area, context);
    makeBlur(picture);
  }
  fillWith(blurred_.get(), area, CAIRO_FILTER_BILINEAR, context);
}

void Backdrop::paintStill(const CGRect& area, cairo_t* context) const {
  cairo_save(context);
  cairo_translate(context, area.x, area.y);
  artwork::drawStillWallpaper(context, {area.width, area.height}, still_);
  cairo_restore(context);
}

void Backdrop::paintFile(const CGRect& area, cairo_t* context) {
  double scale = 1;
  double across = 0;
  cairo_user_to_device_distance(context, &scale, &across);
  makeFilled({0, 0, area.width * scale, area.height * scale});
  cairo_save(context);
  cairo_translate(context, area.x, area.y);
  cairo_scale(context, 1 / scale, 1 / scale);
  cairo_set_source_surface(context, filled_.get(), 0, 0);
  cairo_paint(context);
  cairo_restore(context);
}

// A transparent GIF is painted on it at every frame, which should not scale it again.
void Backdrop::makeFilled(const CGRect& pixels) {
  const int width = static_cast<int>(std::ceil(pixels.width));
  const int height = static_cast<int>(std::ceil(pixels.height));
  const bool fits = filled_ && cairo_image_surface_get_width(filled_.get()) == width &&
                    cairo_image_surface_get_height(filled_.get()) == height;
  if (fits) return;
  filled_.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  const auto image = imageInFile(options_.file);
  platform::backend::PictureSurface picture;
  if (image) picture.update(*image);
  if (picture.surface() == nullptr) return;
  const DrawingContext context(cairo_create(filled_.get()));
  fillWith(picture.surface(), pixels, CAIRO_FILTER_GOOD, context.get());
}

void Backdrop::makeBlur(const WallpaperPicture& picture) {
  constexpr int details = 12;
  constexpr double darkness = 0.45;
  generation_ = picture.generation();
  blurred_ = blurredCopy(picture.surface(), details);
  const DrawingContext context(cairo_create(blurred_.get()));
  cairo_set_source_rgba(context.get(), 0, 0, 0, darkness);
  cairo_paint(context.get());
}

}  // namespace host
