#include "settings_window/preview_frames.h"

#include <algorithm>
#include <mutex>

#include <cairo.h>

#include "command_line/failure.h"
#include "gifview/gif_frame_delay.h"
#include "platform/image_source.h"
#include "platform/linux/views/cairo_objects.h"
#include "platform/linux/views/picture_surface.h"
#include "tool/support/user_file.h"

namespace settings_window {
namespace {

using platform::backend::CairoContext;
using platform::backend::CairoSurface;
using platform::backend::PictureSurface;

// Draws the picture so that it fills the target, and cuts off the rest.
void drawFilling(cairo_surface_t* picture, cairo_surface_t* target) {
  const double width = cairo_image_surface_get_width(picture);
  const double height = cairo_image_surface_get_height(picture);
  const double scale = std::max(previewWidth / width, previewHeight / height);
  const CairoContext context(cairo_create(target));
  cairo_translate(context.get(), (previewWidth - width * scale) / 2,
                  (previewHeight - height * scale) / 2);
  cairo_scale(context.get(), scale, scale);
  cairo_set_source_surface(context.get(), picture, 0, 0);
  cairo_paint(context.get());
  cairo_surface_flush(target);
}

Object<GdkTexture> textureOf(cairo_surface_t* surface) {
  const int stride = cairo_image_surface_get_stride(surface);
  const auto size = static_cast<gsize>(stride) * previewHeight;
  GBytes* bytes = g_bytes_new(cairo_image_surface_get_data(surface), size);
  Object<GdkTexture> texture(gdk_memory_texture_new(previewWidth, previewHeight, GDK_MEMORY_DEFAULT,
                                                    bytes, static_cast<gsize>(stride)));
  g_bytes_unref(bytes);
  return texture;
}

Object<GdkTexture> previewOf(const platform::UIImage& image, PictureSurface& converted) {
  converted.update(image);
  if (converted.surface() == nullptr) return nullptr;
  const CairoSurface small(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, previewWidth, previewHeight));
  drawFilling(converted.surface(), small.get());
  return textureOf(small.get());
}

}  // namespace

std::vector<PreviewFrame> previewFrames(const std::string& path, int count) {
  static std::mutex oneFile;
  const std::scoped_lock lock(oneFile);
  std::vector<PreviewFrame> frames;
  try {
    const auto source = platform::CGImageSource::createWithData(tool::openUserFile(path));
    if (!source) return frames;
    PictureSurface converted;
    for (int index = 0; index < std::min(count, source->count()); ++index) {
      const auto image = source->createImageAtIndex(index);
      auto texture = image ? previewOf(*image, converted) : nullptr;
      if (!texture) continue;
      const double delay = lumora::CGImageSourceGetGifFrameDelay(*source, index);
      frames.push_back({std::move(texture), std::chrono::duration<double>(delay)});
    }
  } catch (const command_line::Failure&) {
    // A file that cannot be read has no preview.
  }
  return frames;
}

}  // namespace settings_window
