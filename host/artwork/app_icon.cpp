#include "host/artwork/app_icon.h"

#include "host/artwork/painting.h"

namespace artwork {
namespace {

constexpr double gridSide = 128;
constexpr Color light = rgb(0xfff3d6);

void drawHill(cairo_t* context) {
  setSource(context, rgb(0x2a1e4a));
  cairo_move_to(context, 8, 90);
  cairo_curve_to(context, 27, 79, 45, 79, 64, 88);
  cairo_curve_to(context, 83, 97, 101, 96, 120, 84);
  cairo_line_to(context, 120, 128);
  cairo_line_to(context, 8, 128);
  cairo_close_path(context);
  cairo_fill(context);
}

void drawStar(cairo_t* context, Point center) {
  constexpr double ray = 8.5;
  constexpr double waist = 2.5;
  setSource(context, light);
  cairo_move_to(context, center.x, center.y - ray);
  cairo_line_to(context, center.x + waist, center.y - waist);
  cairo_line_to(context, center.x + ray, center.y);
  cairo_line_to(context, center.x + waist, center.y + waist);
  cairo_line_to(context, center.x, center.y + ray);
  cairo_line_to(context, center.x - waist, center.y + waist);
  cairo_line_to(context, center.x - ray, center.y);
  cairo_line_to(context, center.x - waist, center.y - waist);
  cairo_close_path(context);
  cairo_fill(context);
}

}  // namespace

void drawAppIcon(cairo_t* context, double side) {
  const SavedState saved(context);
  cairo_scale(context, side / gridSide, side / gridSide);
  addRoundedRect(context, {8, 8, 112, 112}, 26);
  cairo_clip(context);
  setLinearSource(context, {0, 8}, {0, 120},
                  {{0, rgb(0x1b1f4b)}, {0.6, rgb(0x6d4a8c)}, {1, rgb(0xf0955f)}});
  cairo_paint(context);
  fillCircle(context, {80, 48}, 17, light);
  drawHill(context);
  drawStar(context, {28, 42.5});
}

}  // namespace artwork
