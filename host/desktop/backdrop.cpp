#include "host/desktop/backdrop.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <fcntl.h>

#include "host/artwork/still_wallpaper.h"
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

// Returns an opaque surface of this width that shows all of the source.
cairo_surface_t* resized(cairo_surface_t* source, double sourceWidth, double sourceHeight,
                         int width, int height) {
  cairo_surface_t* result = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
  cairo_t* context = cairo_create(result);
  cairo_scale(context, width / sourceWidth, height / sourceHeight);
  cairo_set_source_surface(context, source, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
  cairo_paint(context);
  cairo_destroy(context);
  return result;
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
  if (picture.surface() == nullptr) {
    cairo_save(context);
    cairo_translate(context, area.x, area.y);
    artwork::drawStillWallpaper(context, {area.width, area.height}, artwork::Still::Shared);
    cairo_restore(context);
    return;
  }
  if (options_.kind == BackdropKind::Color) {
    cairo_set_source_rgb(context, options_.red, options_.green, options_.blue);
    cairo_paint(context);
    return;
  }
  if (options_.kind == BackdropKind::File) {
    makeFilled(area);
    cairo_set_source_surface(context, filled_.get(), area.x, area.y);
    cairo_paint(context);
    return;
  }
  if (!blurred_ || generation_ != picture.generation()) makeBlur(picture);
  fillWith(blurred_.get(), area, CAIRO_FILTER_BILINEAR, context);
}

// A transparent GIF is painted on it at every frame, which should not scale it again.
void Backdrop::makeFilled(const CGRect& area) {
  const int width = static_cast<int>(std::ceil(area.width));
  const int height = static_cast<int>(std::ceil(area.height));
  const bool fits = filled_ && cairo_image_surface_get_width(filled_.get()) == width &&
                    cairo_image_surface_get_height(filled_.get()) == height;
  if (fits) return;
  filled_.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  const auto image = imageInFile(options_.file);
  platform::backend::PictureSurface picture;
  if (image) picture.update(*image);
  if (picture.surface() == nullptr) return;
  cairo_t* context = cairo_create(filled_.get());
  fillWith(picture.surface(), {0, 0, area.width, area.height}, CAIRO_FILTER_GOOD, context);
  cairo_destroy(context);
}

// Shrinking averages; the steps of two on the way back smooth the result.
void Backdrop::makeBlur(const WallpaperPicture& picture) {
  generation_ = picture.generation();
  constexpr int longSideOfBlur = 12;
  constexpr int timesDoubled = 4;
  constexpr double darkness = 0.45;
  const double longSide = std::max(picture.width(), picture.height());
  const auto side = [longSide](int length) {
    return std::max(static_cast<int>(std::lround(length * longSideOfBlur / longSide)), 2);
  };
  int width = side(picture.width());
  int height = side(picture.height());
  blurred_.reset(resized(picture.surface(), picture.width(), picture.height(), width, height));
  for (int times = 0; times < timesDoubled; ++times) {
    blurred_.reset(resized(blurred_.get(), width, height, width * 2, height * 2));
    width *= 2;
    height *= 2;
  }
  cairo_t* context = cairo_create(blurred_.get());
  cairo_set_source_rgba(context, 0, 0, 0, darkness);
  cairo_paint(context);
  cairo_destroy(context);
}

}  // namespace host
