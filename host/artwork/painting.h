// What all drawings of the artwork share: colors, rounded shapes, gradients and text.
// Units are points. Nothing here has a background of its own.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

struct Point {
  double x;
  double y;
};

// Components from 0 to 1; alpha is not multiplied into the others.
struct Color {
  double red;
  double green;
  double blue;
  double alpha = 1;

  constexpr Color withAlpha(double value) const { return {red, green, blue, value}; }
};

// A color from 0xRRGGBB.
constexpr Color rgb(unsigned hex) {
  return {(hex >> 16 & 0xff) / 255.0, (hex >> 8 & 0xff) / 255.0, (hex & 0xff) / 255.0};
}

inline constexpr Color white{1, 1, 1};
inline constexpr Color black{0, 0, 0};

// Saves the context's state and restores it at the end of the scope.
class SavedState {
 public:
  explicit SavedState(cairo_t* context) : context_(context) { cairo_save(context_); }
  ~SavedState() { cairo_restore(context_); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;

 private:
  cairo_t* context_;
};

// A color of a gradient; the offset runs from 0 to 1.
struct Stop {
  double offset;
  Color color;
};

void setSource(cairo_t* context, const Color& color);
void setLinearSource(cairo_t* context, Point from, Point to, std::initializer_list<Stop> stops);
// From the inner color at center to fully transparent at radius, without a visible rim.
void setGlowSource(cairo_t* context, Point center, double radius, const Color& inner);

// Both append to the current path. The rounded rectangle's curvature grows continuously from the
// sides into the corners where there is room for it; a radius of half the height gives a capsule.
void addRoundedRect(cairo_t* context, const Rect& rect, double radius);
void addCircle(cairo_t* context, Point center, double radius);

void fillRoundedRect(cairo_t* context, const Rect& rect, double radius, const Color& color);
void fillCircle(cairo_t* context, Point center, double radius, const Color& color);
// The soft shadow that a plate casts below itself. reach: its width.
void drawPlateShadow(cairo_t* context, const Rect& rect, double radius, double reach);

enum class Weight { ExtraLight, Medium, SemiBold };
enum class Align { Left, Center, Right };

struct TextStyle {
  double size;
  Weight weight;
  Color color;
  Align align = Align::Left;
};

// One line of text; the origin lies on the baseline, at the side that the style is aligned to.
void drawText(cairo_t* context, const std::string& text, Point origin, const TextStyle& style);
// The same over a soft dark shadow, readable in front of any picture.
void drawShadowedText(cairo_t* context, const std::string& text, Point origin,
                      const TextStyle& style);
// The text, shortened with an ellipsis if it is wider than this.
std::string fittedText(cairo_t* context, const std::string& text, const TextStyle& style,
                       double width);

// Calls draw once for each faint copy that makes up a soft shadow: the context is moved, and shade
// is the color to draw in. reach: how far the copies are moved.
void drawShadowCopies(cairo_t* context, double reach,
                      const std::function<void(const Color& shade)>& draw);

}  // namespace artwork
