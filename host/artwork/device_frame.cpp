#include "host/artwork/device_frame.h"

#include <numbers>
#include <utility>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

constexpr Color bodyColor = rgb(0x0c0d10);
constexpr Color keyColor = rgb(0x34363d);
constexpr Color cameraColor = rgb(0x23262e);
constexpr Color lensColor = rgb(0x3c4a66);

constexpr double cornerRadius = 22;
// By how much the keys stand out.
constexpr double keyDepth = 2.5;
constexpr double rimWidth = 1.25;

// Turns the context so that the device can be drawn upright, and returns the upright screen's size.
Size turnUpright(cairo_t* context, Size screen, DeviceTop top) {
  const auto quarters = static_cast<int>(top);
  const bool isSideways = quarters % 2 != 0;
  const Size upright = isSideways ? Size{screen.height, screen.width} : screen;
  cairo_translate(context, screen.width / 2, screen.height / 2);
  cairo_rotate(context, quarters * std::numbers::pi / 2);
  cairo_translate(context, -upright.width / 2, -upright.height / 2);
  return upright;
}

// The keys for the volume at the left and the one for the display at the right.
void drawKeys(cairo_t* context, const Rect& body) {
  const double length = body.height * 0.075;
  for (const double share : {0.2, 0.29}) {
    fillRoundedRect(context,
                    {body.x - keyDepth, body.y + body.height * share, 2 * keyDepth, length},
                    keyDepth / 2, keyColor);
  }
  fillRoundedRect(
      context,
      {body.x + body.width - keyDepth, body.y + body.height * 0.23, 2 * keyDepth, length * 1.4},
      keyDepth / 2, keyColor);
}

void drawCamera(cairo_t* context, double middle, double y) {
  fillRoundedRect(context, {middle - 24, y - 2, 48, 4}, 2, cameraColor);
  fillCircle(context, {middle + 36, y}, 3.2, cameraColor);
  fillCircle(context, {middle + 36, y}, 1.5, lensColor);
}

}  // namespace

void drawDeviceFrame(cairo_t* context, Size screen, double thickness, DeviceTop top) {
  const SavedState saved(context);
  const Size upright = turnUpright(context, screen, top);
  const double edge = thickness - keyDepth;
  const Rect body{-edge, -edge, upright.width + 2 * edge, upright.height + 2 * edge};
  drawKeys(context, body);
  fillRoundedRect(context, body, cornerRadius + edge, bodyColor);
  const double inset = rimWidth / 2;
  addRoundedRect(context,
                 {body.x + inset, body.y + inset, body.width - rimWidth, body.height - rimWidth},
                 cornerRadius + edge - inset);
  setSource(context, keyColor);
  cairo_set_line_width(context, rimWidth);
  cairo_stroke(context);
  drawCamera(context, upright.width / 2, -edge / 2);
}

void drawScreenCorners(cairo_t* context, Size screen) {
  const SavedState saved(context);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_rectangle(context, -1, -1, screen.width + 2, screen.height + 2);
  addRoundedRect(context, {0, 0, screen.width, screen.height}, cornerRadius);
  setSource(context, bodyColor);
  cairo_fill(context);
}

}  // namespace artwork
