#include "host/artwork/painting.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace artwork {
namespace {

using Pattern = std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)>;

// A corner takes up to this many radii of each side: with more the sides look bulged, with less
// the corners are plain arcs.
constexpr double cornerReach = 1.5;
// Lengths of the Bézier handles, as parts of the corner: of an arc and of a long corner.
constexpr double arcHandle = 0.5523;
constexpr double longHandle = 0.75;

constexpr int plateShadowLayerCount = 5;
constexpr double plateShadowAlpha = 0.035;

constexpr int shadowCopyCount = 8;
constexpr double shadowAlpha = 0.08;
// As a part of the type size, up to a limit, because the copies must overlap.
constexpr double textShadowShare = 0.2;
constexpr double maxTextShadow = 2.6;

void addStop(cairo_pattern_t* pattern, double offset, const Color& color) {
  cairo_pattern_add_color_stop_rgba(pattern, offset, color.red, color.green, color.blue,
                                    color.alpha);
}

const char* familyOf(Weight weight) {
  // Cairo has two weights only, but the font's other weights are also families.
  switch (weight) {
    case Weight::ExtraLight:
      return "Inter Extra Light";
    case Weight::Medium:
      return "Inter";
    case Weight::SemiBold:
      return "Inter Semi Bold";
  }
  return "Inter";
}

void selectFont(cairo_t* context, const TextStyle& style) {
  // Hinted metrics would space letters by whole pixels, unevenly at small sizes.
  const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(
      cairo_font_options_create(), &cairo_font_options_destroy);
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(context, options.get());
  cairo_select_font_face(context, familyOf(style.weight), CAIRO_FONT_SLANT_NORMAL,
                         CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context, style.size);
}

double selectedTextWidth(cairo_t* context, const std::string& text) {
  cairo_text_extents_t extents;
  cairo_text_extents(context, text.c_str(), &extents);
  return extents.x_advance;
}

double alignedShare(Align align) {
  return align == Align::Left ? 0 : align == Align::Center ? 0.5 : 1;
}

void removeLastCharacter(std::string& text) {
  while (!text.empty() && (text.back() & 0xc0) == 0x80) text.pop_back();
  if (!text.empty()) text.pop_back();
}

}  // namespace

void setSource(cairo_t* context, const Color& color) {
  cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

void setLinearSource(cairo_t* context, Point from, Point to, std::initializer_list<Stop> stops) {
  const Pattern pattern(cairo_pattern_create_linear(from.x, from.y, to.x, to.y),
                        &cairo_pattern_destroy);
  for (const Stop& stop : stops) addStop(pattern.get(), stop.offset, stop.color);
  cairo_set_source(context, pattern.get());
}

void setGlowSource(cairo_t* context, Point center, double radius, const Color& inner) {
  const Pattern pattern(
      cairo_pattern_create_radial(center.x, center.y, 0, center.x, center.y, radius),
      &cairo_pattern_destroy);
  for (const double offset : {0.0, 0.2, 0.4, 0.6, 0.8, 1.0}) {
    const double fade = (1 + std::cos(std::numbers::pi * offset)) / 2;
    addStop(pattern.get(), offset, inner.withAlpha(inner.alpha * fade));
  }
  cairo_set_source(context, pattern.get());
}

void addRoundedRect(cairo_t* context, const Rect& rect, double radius) {
  const double half = std::min(rect.width, rect.height) / 2;
  const double arc = std::min(radius, half);
  if (arc <= 0) return cairo_rectangle(context, rect.x, rect.y, rect.width, rect.height);
  const double corner = std::min(arc * cornerReach, half);
  const double length = (corner / arc - 1) / (cornerReach - 1);
  const double rest = corner * (1 - std::lerp(arcHandle, longHandle, length));
  const double right = rect.x + rect.width;
  const double bottom = rect.y + rect.height;
  cairo_new_sub_path(context);
  cairo_move_to(context, rect.x + corner, rect.y);
  cairo_line_to(context, right - corner, rect.y);
  cairo_curve_to(context, right - rest, rect.y, right, rect.y + rest, right, rect.y + corner);
  cairo_line_to(context, right, bottom - corner);
  cairo_curve_to(context, right, bottom - rest, right - rest, bottom, right - corner, bottom);
  cairo_line_to(context, rect.x + corner, bottom);
  cairo_curve_to(context, rect.x + rest, bottom, rect.x, bottom - rest, rect.x, bottom - corner);
  cairo_line_to(context, rect.x, rect.y + corner);
  cairo_curve_to(context, rect.x, rect.y + rest, rect.x + rest, rect.y, rect.x + corner, rect.y);
  cairo_close_path(context);
}

void addCircle(cairo_t* context, Point center, double radius) {
  cairo_new_sub_path(context);
  cairo_arc(context, center.x, center.y, radius, 0, 2 * std::numbers::pi);
  cairo_close_path(context);
}

void fillRoundedRect(cairo_t* context, const Rect& rect, double radius, const Color& color) {
  setSource(context, color);
  addRoundedRect(context, rect, radius);
  cairo_fill(context);
}

void fillCircle(cairo_t* context, Point center, double radius, const Color& color) {
  setSource(context, color);
  addCircle(context, center, radius);
  cairo_fill(context);
}

void drawPlateShadow(cairo_t* context, const Rect& rect, double radius, double reach) {
  for (int layer = 0; layer < plateShadowLayerCount; ++layer) {
    const double grown = reach * (layer + 0.5) / plateShadowLayerCount - reach / 4;
    const Rect shadow{rect.x - grown, rect.y - grown + reach / 3, rect.width + 2 * grown,
                      rect.height + 2 * grown};
    fillRoundedRect(context, shadow, radius + grown, black.withAlpha(plateShadowAlpha));
  }
}

void drawText(cairo_t* context, const std::string& text, Point origin, const TextStyle& style) {
  const SavedState saved(context);
  selectFont(context, style);
  setSource(context, style.color);
  const double shift = alignedShare(style.align) * selectedTextWidth(context, text);
  cairo_move_to(context, origin.x - shift, origin.y);
  cairo_show_text(context, text.c_str());
  cairo_new_path(context);
}

void drawShadowedText(cairo_t* context, const std::string& text, Point origin,
                      const TextStyle& style, const Color& shade) {
  const double reach = std::min(style.size * textShadowShare, maxTextShadow);
  drawShadowCopies(context, reach, shade, [&](const Color& faint) {
    drawText(context, text, origin, {style.size, style.weight, faint, style.align});
  });
  drawText(context, text, origin, style);
}

std::string fittedText(cairo_t* context, const std::string& text, const TextStyle& style,
                       double width) {
  const SavedState saved(context);
  selectFont(context, style);
  if (selectedTextWidth(context, text) <= width) return text;
  std::string shortened = text;
  while (!shortened.empty() && selectedTextWidth(context, shortened + "…") > width) {
    removeLastCharacter(shortened);
  }
  while (shortened.ends_with(' ')) shortened.pop_back();
  return shortened + "…";
}

void drawShadowCopies(cairo_t* context, double reach, const Color& shade,
                      const std::function<void(const Color& faint)>& draw) {
  for (const double ring : {0.5, 1.0}) {
    for (int copy = 0; copy < shadowCopyCount; ++copy) {
      const SavedState saved(context);
      const double angle = 2 * std::numbers::pi * copy / shadowCopyCount;
      cairo_translate(context, std::cos(angle) * reach * ring,
                      std::sin(angle) * reach * ring + reach * 0.4);
      draw(shade.withAlpha(shadowAlpha));
    }
  }
}

}  // namespace artwork
