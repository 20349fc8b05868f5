// Colors, rounded shapes, gradients and text for all drawings. Units are points. Everything draws
// on the context's current target and keeps what it does not cover.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include <cairo.h>

#include "host/artwork/geometry.h"

namespace artwork {

// Components from 0 to 1, not premultiplied.
struct Color {
  double red;
  double green;
  double blue;
  double alpha = 1;

  constexpr Color withAlpha(double value) const { return {red, green, blue, value}; }
  bool operator==(const Color&) const = default;
};

// Returns the opaque color 0xRRGGBB.
constexpr Color rgb(unsigned hex) {
  return {(hex >> 16 & 0xff) / 255.0, (hex >> 8 & 0xff) / 255.0, (hex & 0xff) / 255.0};
}

inline constexpr Color white{1, 1, 1};
inline constexpr Color black{0, 0, 0};

// The colors of a text and of the soft shadow around it, which makes it readable on any picture.
struct Ink {
  Color text;
  Color shade;

  bool operator==(const Ink&) const = default;
};

inline constexpr Ink lightInk{white, black};
inline constexpr Ink darkInk{rgb(0x17161f), white};
// Returns the one that is readable on something of this brightness, from 0 to 1.
constexpr const Ink& inkOn(double brightness) {
  constexpr double brightest = 0.64;
  return brightness > brightest ? darkInk : lightInk;
}

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

// A color of a gradient. offset: from 0 to 1.
struct Stop {
  double offset;
  Color color;
};

void setSource(cairo_t* context, const Color& color);
void setLinearSource(cairo_t* context, Point from, Point to, std::initializer_list<Stop> stops);
// Sets a gradient from the inner color at center to transparent at radius, without a visible edge.
void setGlowSource(cairo_t* context, Point center, double radius, const Color& inner);

// Append a shape to the current path. The curvature of the rounded rectangle grows continuously
// from the sides into the corners if there is room; a radius of half the height gives a capsule.
void addRoundedRect(cairo_t* context, const Rect& rect, double radius);
void addCircle(cairo_t* context, Point center, double radius);

void fillRoundedRect(cairo_t* context, const Rect& rect, double radius, const Color& color);
void fillCircle(cairo_t* context, Point center, double radius, const Color& color);
// Draws the soft shadow below a plate. reach: the width of the shadow.
void drawPlateShadow(cairo_t* context, const Rect& rect, double radius, double reach);

enum class Weight { ExtraLight, Medium, SemiBold };
enum class Align { Left, Center, Right };

struct TextStyle {
  double size;
  Weight weight;
  Color color;
  Align align = Align::Left;
};

// Draws one line of text. origin: on the baseline, at the side that the style aligns to.
void drawText(cairo_t* context, const std::string& text, Point origin, const TextStyle& style);
// Draws the same with a soft shadow.
void drawShadowedText(cairo_t* context, const std::string& text, Point origin,
                      const TextStyle& style, const Color& shade = black);
// Returns the text, shortened with an ellipsis if it is wider than width.
std::string fittedText(cairo_t* context, const std::string& text, const TextStyle& style,
                       double width);

// Draws a soft shadow of many faint copies: calls draw for each, with the context moved by up to
// reach and the color to draw in, which is a faint shade.
void drawShadowCopies(cairo_t* context, double reach, const Color& shade,
                      const std::function<void(const Color& faint)>& draw);

}  // namespace artwork
