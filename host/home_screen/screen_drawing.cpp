#include "host/home_screen/screen_drawing.h"

#include <cmath>

#include <sys/mman.h>

#include "platform/linux/files/file_contents.h"
#include "platform/linux/views/view_renderer.h"

namespace host {
namespace {

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
  const auto& file = *static_cast<const platform::backend::FileDescriptor*>(closure);
  return platform::backend::writeAll(file, {data, length}) ? CAIRO_STATUS_SUCCESS
                                                           : CAIRO_STATUS_WRITE_ERROR;
}

}  // namespace

void drawPartOfScreen(Screen& screen, cairo_surface_t* surface, double scale,
                      const platform::backend::Region& part) {
  const DrawingContext context(cairo_create(surface));
  clipTo(context.get(), part);
  // The last row and column may be covered only partly.
  if (scale != std::round(scale)) cairo_paint(context.get());
  cairo_scale(context.get(), scale, scale);
  platform::backend::renderView(screen.root(), context.get());
  cairo_surface_flush(surface);
}

cairo_rectangle_int_t pixelsOf(const Screen& screen, double scale) {
  const platform::CGSize size = screen.size();
  return {0, 0, static_cast<int>(std::lround(size.width * scale)),
          static_cast<int>(std::lround(size.height * scale))};
}

DrawnSurface drawnScreen(Screen& screen, double scale) {
  screen.showTime();
  screen.followWallpaper(scale);
  const cairo_rectangle_int_t all = pixelsOf(screen, scale);
  DrawnSurface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, all.width, all.height));
  drawPartOfScreen(screen, surface.get(), scale, platform::backend::Region(all));
  return surface;
}

int pngOf(cairo_surface_t* surface) {
  platform::backend::FileDescriptor png(memfd_create("screenshot", MFD_CLOEXEC));
  const cairo_status_t status =
      png ? cairo_surface_write_to_png_stream(surface, append, &png) : CAIRO_STATUS_NO_MEMORY;
  return status == CAIRO_STATUS_SUCCESS ? png.release() : -1;
}

int pixelFileOf(cairo_surface_t* surface) {
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return -1;
  platform::backend::FileDescriptor file(memfd_create("pixels", MFD_CLOEXEC));
  const auto size = static_cast<std::size_t>(cairo_image_surface_get_stride(surface)) *
                    static_cast<std::size_t>(cairo_image_surface_get_height(surface));
  const bool isWritten =
      file && platform::backend::writeAll(file, {cairo_image_surface_get_data(surface), size});
  return isWritten ? file.release() : -1;
}

}  // namespace host
