// The drawing vocabulary all of the artwork shares: colours, rounded shapes, gradients and text.
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
struct Colour {
  double red;
  double green;
  double blue;
  double alpha = 1;

  constexpr Colour withAlpha(double value) const { return {red, green, blue, value}; }
};

// A colour from 0xRRGGBB.
constexpr Colour rgb(unsigned hex) {
  return {(hex >> 16 & 0xff) / 255.0, (hex >> 8 & 0xff) / 255.0, (hex & 0xff) / 255.0};
}

inline constexpr Colour kWhite{1, 1, 1};
inline constexpr Colour kBlack{0, 0, 0};

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

struct Stop {
  double offset;
  Colour colour;
};

void setSource(cairo_t* context, const Colour& colour);
void setLinearSource(cairo_t* context, Point from, Point to, std::initializer_list<Stop> stops);
// From the inner colour at `center` to fully transparent at `radius`, without a visible rim.
void setGlowSource(cairo_t* context, Point center, double radius, const Colour& inner);

// Both append to the current path. The rounded rectangle's curvature grows continuously from the
// sides into the corners where there is room for it; a radius of half the height gives a capsule.
void addRoundedRect(cairo_t* context, const Rect& rect, double radius);
void addCircle(cairo_t* context, Point center, double radius);

void fillRoundedRect(cairo_t* context, const Rect& rect, double radius, const Colour& colour);
void fillCircle(cairo_t* context, Point center, double radius, const Colour& colour);
// The soft shadow that a plate throws below itself, `reach` points wide.
void drawPlateShadow(cairo_t* context, const Rect& rect, double radius, double reach);

enum class Weight { ExtraLight, Medium, SemiBold };
enum class Align { Left, Center, Right };

struct TextStyle {
  double size;
  Weight weight;
  Colour colour;
  Align align = Align::Left;
};

// One line of text; `origin` lies on the baseline at the side that `style.align` names.
void drawText(cairo_t* context, const std::string& text, Point origin, const TextStyle& style);
// The same above a soft dark shadow, readable over any picture.
void drawShadowedText(cairo_t* context, const std::string& text, Point origin,
                      const TextStyle& style);
// `text`, shortened with an ellipsis to at most `width` points.
std::string fittedText(cairo_t* context, const std::string& text, const TextStyle& style,
                       double width);

// Calls `draw` for each faint copy of a soft shadow, with the context moved and `shade` to draw in.
void drawShadowCopies(cairo_t* context, double reach,
                      const std::function<void(const Colour& shade)>& draw);

}  // namespace artwork
