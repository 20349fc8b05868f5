#include "host/home_screen/screen_painter.h"

#include "host/home_screen/screen_drawing.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/views/display_damage.h"

namespace host {

using platform::backend::Region;

ScreenPainter::ScreenPainter(Screen& screen, double scale, std::size_t maxKeptBytes)
    : screen_(screen), scale_(scale), replay_(maxKeptBytes) {}

Region ScreenPainter::all() const {
  return Region(pixelsOf(screen_, scale_));
}

Region ScreenPainter::takeChangedPart(bool isAll) {
  isAll = screen_.followWallpaper(scale_) || isAll;
  const Region redrawn = screen_.takeRedrawnPart(scale_);
  replay_.forget(redrawn);
  const auto views = platform::backend::takeChangedViews(screen_.root());
  const auto view = views.size() == 1 ? views.front() : nullptr;
  const auto file = view ? view->image()->impl().file : std::nullopt;
  const auto decode = [&] { return platform::backend::damageOf(views, screen_.root(), scale_); };
  const bool isOnlyNextFrame = view && view == animated_.lock();
  if (!isAll && (isOnlyNextFrame || views.empty())) {
    Region part = isOnlyNextFrame ? replay_.next(file, decode) : Region();
    part.add(redrawn);
    return part;
  }
  replay_.restart(file);
  animated_ = view;
  // Decodes what is drawn also if everything is, so that the damage of the next frame is known.
  Region damage = decode();
  damage.add(redrawn);
  return isAll ? all() : damage;
}

void ScreenPainter::paint(cairo_surface_t* surface, const Region& part) {
  replay_.draw(surface, part,
               [&](const Region& unkept) { drawPartOfScreen(screen_, surface, scale_, unkept); });
}

}  // namespace host
