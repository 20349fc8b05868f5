#include "host/artwork/still_wallpaper.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <numbers>

#include "host/artwork/painting.h"

namespace artwork {
namespace {

// The top edge of a layer. Vertical positions scale with the screen's height. Waves scale with the
// unit, which combines both sides, so that they are as steep on a wide screen as on a tall one.
struct Wave {
  // As a part of the height.
  double base;
  // As parts of the unit.
  double amplitude;
  double length;
  double phase;
};

struct Layer {
  Wave wave;
  Color crest;
  Color foot;
  // From crest to foot, as a part of the unit.
  double depth;
};

constexpr double stepWidth = 4;
constexpr int grainSide = 128;
// The number of strengths including 0; the strongest is 2 of 255.
constexpr std::uint32_t grainLevels = 3;

double unitOf(Size size) {
  return std::sqrt(size.width * size.height);
}

double heightOf(const Wave& wave, Size size, double x) {
  const double unit = unitOf(size);
  // Measured from the middle, so that every aspect ratio shows the same motif.
  const double turn =
      2 * std::numbers::pi * (x - size.width / 2) / (wave.length * unit) + wave.phase;
  const double shape = std::sin(turn) + 0.4 * std::sin(2.17 * turn + 1.3 * wave.phase);
  return wave.base * size.height - wave.amplitude * unit * shape;
}

void addWaveEdge(cairo_t* context, const Wave& wave, Size size, double left, double right) {
  const int steps = static_cast<int>(std::ceil((right - left) / stepWidth));
  for (int step = 0; step <= steps; ++step) {
    const double x = left + step * stepWidth;
    cairo_line_to(context, x, heightOf(wave, size, x));
  }
}

void fillLayer(cairo_t* context, const Layer& layer, Size size, double overhang) {
  const double right = size.width + overhang;
  const double bottom = size.height + overhang;
  cairo_new_path(context);
  addWaveEdge(context, layer.wave, size, -overhang, right);
  cairo_line_to(context, right + stepWidth, bottom);
  cairo_line_to(context, -overhang, bottom);
  cairo_close_path(context);
  const double crest = layer.wave.base * size.height - layer.wave.amplitude * unitOf(size);
  setLinearSource(context, {0, crest}, {0, crest + layer.depth * unitOf(size)},
                  {{0, layer.crest}, {1, layer.foot}});
  cairo_fill(context);
}

void fillSky(cairo_t* context, Size size, std::initializer_list<Stop> stops) {
  setLinearSource(context, {0, 0}, {0, size.height}, stops);
  cairo_rectangle(context, 0, 0, size.width, size.height);
  cairo_fill(context);
}

void fillGlow(cairo_t* context, Point center, double radius, const Color& color) {
  setGlowSource(context, center, radius, color);
  cairo_rectangle(context, center.x - radius, center.y - radius, 2 * radius, 2 * radius);
  cairo_fill(context);
}

void drawHills(cairo_t* context, Size size) {
  fillSky(context, size,
          {{0, rgb(0x1d1f4d)},
           {0.22, rgb(0x3a2f6b)},
           {0.42, rgb(0x7d4a7d)},
           {0.56, rgb(0xc46f78)},
           {0.64, rgb(0xe39a78)}});
  const double unit = unitOf(size);
  const Point sun{size.width * 0.64, size.height * 0.6};
  fillGlow(context, sun, unit * 0.55, rgb(0xffc48a).withAlpha(0.5));
  fillCircle(context, sun, unit * 0.078, rgb(0xfbd3a0));
  constexpr Layer hills[] = {
      {{0.605, 0.022, 0.92, 0.4}, rgb(0xa9617f), rgb(0xc97f7f), 0.16},
      {{0.665, 0.034, 0.74, 2.2}, rgb(0x7b4878), rgb(0xa3627e), 0.2},
      {{0.745, 0.038, 0.98, 4.1}, rgb(0x51366d), rgb(0x7a4a79), 0.24},
      {{0.83, 0.042, 0.8, 0.9}, rgb(0x31295a), rgb(0x4d3a6e), 0.26},
      {{0.925, 0.045, 1.1, 3.0}, rgb(0x1b1c44), rgb(0x2a2755), 0.24},
  };
  for (const Layer& hill : hills) fillLayer(context, hill, size, 0);
}

void drawStars(cairo_t* context, Size size) {
  constexpr int starCount = 70;
  // Steps of the golden and of the plastic ratio spread the stars evenly.
  constexpr double goldenStep = 0.6180339887;
  constexpr double plasticStep = 0.7548776662;
  for (int star = 1; star <= starCount; ++star) {
    const double x = std::fmod(star * goldenStep + 0.13 * std::sin(star * 3.7), 1.0);
    const double y = std::fmod(star * plasticStep + 0.11 * std::sin(star * 5.1) + 1, 1.0);
    const double brightness = std::fmod(star * 0.37, 1.0);
    fillCircle(context, {x * size.width, y * size.height * 0.62},
               0.5 + 0.7 * brightness * brightness,
               white.withAlpha((1 - y * 0.8) * (0.25 + 0.5 * brightness)));
  }
}

void drawMoon(cairo_t* context, Point center, double radius) {
  fillGlow(context, center, radius * 7, rgb(0xa8d4e0).withAlpha(0.28));
  fillGlow(context, center, radius * 2.4, rgb(0xe6f0ea).withAlpha(0.3));
  setLinearSource(context, {center.x - radius, center.y - radius},
                  {center.x + radius, center.y + radius}, {{0, rgb(0xf6f1df)}, {1, rgb(0xb9cdd0)}});
  addCircle(context, center, radius);
  cairo_fill(context);
}

void drawNight(cairo_t* context, Size size) {
  fillSky(context, size,
          {{0, rgb(0x0d1235)},
           {0.3, rgb(0x16295a)},
           {0.52, rgb(0x1f5470)},
           {0.68, rgb(0x4a9396)},
           {0.8, rgb(0xb9cfae)}});
  const double unit = unitOf(size);
  drawStars(context, size);
  drawMoon(context, {size.width * 0.74, size.height * 0.4}, unit * 0.05);
  constexpr Layer ridges[] = {
      {{0.74, 0.022, 0.7, 1.0}, rgb(0x4f8f96), rgb(0x86b5a6), 0.16},
      {{0.79, 0.03, 0.62, 2.6}, rgb(0x2f6a7c), rgb(0x5c9596), 0.18},
      {{0.86, 0.032, 0.85, 3.4}, rgb(0x1d4560), rgb(0x38707f), 0.2},
      {{0.94, 0.03, 1.0, 5.3}, rgb(0x0f1b3c), rgb(0x1c3a56), 0.18},
  };
  for (const Layer& ridge : ridges) fillLayer(context, ridge, size, 0);
}

void drawFolds(cairo_t* context, Size size) {
  const SavedState saved(context);
  fillSky(context, size, {{0, rgb(0x151a44)}, {1, rgb(0x2a2a63)}});
  cairo_translate(context, size.width / 2, size.height / 2);
  cairo_rotate(context, -0.42);
  cairo_translate(context, -size.width / 2, -size.height / 2);
  constexpr Layer folds[] = {
      {{0.10, 0.05, 1.5, 0.6}, rgb(0x3d3f8c), rgb(0x1a1d4c), 0.42},
      {{0.28, 0.06, 1.7, 2.1}, rgb(0x5d4796), rgb(0x231f55), 0.46},
      {{0.46, 0.06, 1.4, 4.0}, rgb(0x8d5391), rgb(0x33255f), 0.46},
      {{0.63, 0.06, 1.6, 5.6}, rgb(0xc06f86), rgb(0x4a2c68), 0.46},
      {{0.80, 0.05, 1.5, 1.2}, rgb(0x3f8a96), rgb(0x1c2c5c), 0.5},
      {{0.99, 0.05, 1.7, 3.1}, rgb(0x2c5580), rgb(0x141a44), 0.4},
  };
  for (const Layer& fold : folds) fillLayer(context, fold, size, unitOf(size));
}

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

// Faint black and white dots.
Surface makeGrain() {
  Surface grain(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, grainSide, grainSide),
                &cairo_surface_destroy);
  unsigned char* row = cairo_image_surface_get_data(grain.get());
  std::uint32_t random = 0x9e3779b9;
  for (int y = 0; y < grainSide; ++y, row += cairo_image_surface_get_stride(grain.get())) {
    auto* pixels = reinterpret_cast<std::uint32_t*>(row);
    for (int x = 0; x < grainSide; ++x) {
      random ^= random << 13, random ^= random >> 17, random ^= random << 5;
      const std::uint32_t alpha = random % grainLevels;
      const bool isWhite = random >> 31 != 0;
      pixels[x] = alpha * (isWhite ? 0x01010101U : 0x01000000U);
    }
  }
  cairo_surface_mark_dirty(grain.get());
  return grain;
}

// Wide dark gradients show bands with eight bits per channel; grain hides them.
void addGrain(cairo_t* context, Size size) {
  const SavedState saved(context);
  const Surface grain = makeGrain();
  cairo_rectangle(context, 0, 0, size.width, size.height);
  cairo_identity_matrix(context);
  cairo_set_source_surface(context, grain.get(), 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_REPEAT);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
  cairo_fill(context);
}

}  // namespace

void drawStillWallpaper(cairo_t* context, Size size, Still still) {
  const SavedState saved(context);
  cairo_rectangle(context, 0, 0, size.width, size.height);
  cairo_clip(context);
  switch (still) {
    case Still::Shared:
      drawHills(context, size);
      break;
    case Still::LockScreen:
      drawNight(context, size);
      break;
    case Still::HomeScreen:
      drawFolds(context, size);
      break;
  }
  addGrain(context, size);
}

}  // namespace artwork
