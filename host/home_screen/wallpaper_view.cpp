#include "host/home_screen/wallpaper_view.h"

#include <cmath>

#include "platform/linux/views/view_renderer.h"

namespace host {

using platform::CGRect;

std::shared_ptr<const Glimpse> WallpaperView::follow(const Choice& choice, double scale) {
  picture_.look(*this, choice.wallpaper);
  const auto animations = subviews();
  const Look look{picture_.version(), frame(),
                  animations.empty() ? CGRect() : animations.back()->frame(), choice.backdrop};
  if (glimpse_ && look == look_) return glimpse_;
  look_ = look;
  if (!(backdrop_.options() == choice.backdrop)) backdrop_ = Backdrop(choice.backdrop, still_);
  forgetPainting();
  glimpse_ = makeGlimpse(scale);
  return glimpse_;
}

std::shared_ptr<const Glimpse> WallpaperView::makeGlimpse(double scale) {
  const CGRect area = frame();
  const DrawnSurface shown(cairo_image_surface_create(
      CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(area.width * scale)),
      static_cast<int>(std::ceil(area.height * scale))));
  const DrawingContext context(cairo_create(shown.get()));
  cairo_scale(context.get(), scale, scale);
  platform::backend::renderView(*this, context.get());
  return std::make_shared<Glimpse>(shown.get(), artwork::Size{area.width, area.height});
}

void WallpaperView::paint(cairo_t* context, artwork::Size size) {
  backdrop_.paint(picture_, {0, 0, size.width, size.height}, context);
  picture_.forgetPixels();
}

}  // namespace host
