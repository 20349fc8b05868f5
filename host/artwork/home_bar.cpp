#include "host/artwork/home_bar.h"

namespace artwork {
namespace {

constexpr Size bar{134, 5};
constexpr double bottom = 8;

}  // namespace

Rect homeBarOf(Size screen) {
  return {(screen.width - bar.width) / 2, screen.height - bottom - bar.height, bar.width,
          bar.height};
}

void drawHomeBar(cairo_t* context, Size screen, const Color& color) {
  const SavedState saved(context);
  const Rect place = homeBarOf(screen);
  drawPlateShadow(context, place, place.height / 2, 4);
  fillRoundedRect(context, place, place.height / 2, color);
}

}  // namespace artwork
