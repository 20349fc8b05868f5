// Draws the sample wallpapers: an evening lake among misty mountains, under a full moon. Stars
// twinkle, mist drifts, the moon glitters on the water, a boat with a lantern rocks and fireflies
// wander. Every motion repeats a whole number of times, so the last frame leads into the first.
//
// Usage: draw_sample upright|wide OUT.gif
//
// Every run writes the same bytes.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include <cairo.h>

#include "examples/loop_gif.h"

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;

struct Color {
  double red;
  double green;
  double blue;
};

constexpr Color rgb(std::uint32_t hex) {
  return {(hex >> 16 & 255) / 255.0, (hex >> 8 & 255) / 255.0, (hex & 255) / 255.0};
}

constexpr Color moonlight = rgb(0xfff1d6);
constexpr Color lanternLight = rgb(0xffb45e);
constexpr Color fireflyLight = rgb(0xf4e58a);
constexpr Color mistLight = rgb(0xc79ab4);
constexpr Color deepWater = rgb(0x0c1130);
constexpr Color silhouette = rgb(0x070a1c);

struct Ridge {
  // The y of the valley between the slopes.
  double base;
  // How much peaks rise and fall.
  double relief;
  // How far the ridge climbs toward the edges of the picture.
  double riseAtLeft;
  double riseAtRight;
  double wavelength;
  std::uint32_t seed;
  Color top;
  Color foot;
};

// What differs between the samples. Lengths are in pixels.
struct Scene {
  int width;
  int height;
  int frameCount;
  int delayCentiseconds;
  // Stars and mist move only every so many frames, so that most frames are small.
  int skyHold;
  double waterline;
  // Where the sky is brightest.
  double skyFoot;
  double moonX;
  double moonY;
  double moonRadius;
  // The opacity of the light around the moon.
  double moonHaze;
  int starCount;
  double lowestStar;
  std::array<Ridge, 5> ridges;
  int spruceCount;
  int mistBankCount;
  // How far the waves bend the reflection.
  double waveRows;
  // How many times more waves there are from left to right.
  double wavesAcross;
  double boatX;
  double boatY;
  int reedCount;
  double reedHeight;
  // How steeply the reeds rise toward the edges.
  double reedSlope;
  int fireflyCount;

  double waterDepth() const { return height - waterline; }
};

constexpr Scene upright{
    .width = 360,
    .height = 690,
    .frameCount = 60,
    .delayCentiseconds = 8,
    .skyHold = 3,
    .waterline = 432,
    .skyFoot = 432,
    .moonX = 298,
    .moonY = 186,
    .moonRadius = 25,
    .moonHaze = 0.36,
    .starCount = 130,
    .lowestStar = 290,
    .ridges{{
        {358, 82, 6, 18, 88, 2, rgb(0x8a5f8c), rgb(0xc48a94)},
        {378, 62, 42, 10, 74, 11, rgb(0x66508a), rgb(0xa87894)},
        {400, 50, 16, 66, 66, 23, rgb(0x453f7a), rgb(0x84649a)},
        {418, 34, 66, 24, 56, 31, rgb(0x2b2d62), rgb(0x574b86)},
        {430, 14, 26, 40, 60, 47, rgb(0x141a42), rgb(0x1d2350)},
    }},
    .spruceCount = 110,
    .mistBankCount = 5,
    .waveRows = 5.5,
    .wavesAcross = 1,
    .boatX = 104,
    .boatY = 528,
    .reedCount = 120,
    .reedHeight = 120,
    .reedSlope = 2.4,
    .fireflyCount = 14,
};

constexpr Scene wide{
    .width = 960,
    .height = 540,
    .frameCount = 36,
    .delayCentiseconds = 12,
    .skyHold = 2,
    .waterline = 348,
    .skyFoot = 296,
    .moonX = 706,
    .moonY = 112,
    .moonRadius = 27,
    .moonHaze = 0.26,
    .starCount = 300,
    .lowestStar = 230,
    .ridges{{
        {274, 118, 10, 22, 150, 2, rgb(0x8a5f8c), rgb(0xc48a94)},
        {294, 86, 60, 18, 118, 11, rgb(0x66508a), rgb(0xa87894)},
        {316, 62, 24, 84, 98, 23, rgb(0x453f7a), rgb(0x84649a)},
        {334, 42, 92, 36, 84, 31, rgb(0x2b2d62), rgb(0x574b86)},
        {346, 16, 40, 56, 80, 47, rgb(0x141a42), rgb(0x1d2350)},
    }},
    .spruceCount = 280,
    .mistBankCount = 9,
    .waveRows = 4,
    .wavesAcross = 2.4,
    .boatX = 300,
    .boatY = 424,
    .reedCount = 230,
    .reedHeight = 120,
    .reedSlope = 5,
    .fireflyCount = 26,
};

template <auto destroy>
struct Destroyer {
  void operator()(auto* object) const { destroy(object); }
};
template <typename T, auto destroy>
using Handle = std::unique_ptr<T, Destroyer<destroy>>;
using Pattern = Handle<cairo_pattern_t, cairo_pattern_destroy>;

// A generator of numbers in [0, 1) that gives the same numbers for a seed on every platform.
class Chance {
 public:
  explicit Chance(std::uint32_t seed) : state_(seed) {}
  double next() {
    state_ += 0x9e3779b9;
    std::uint32_t bits = (state_ ^ state_ >> 16) * 0x21f0aaad;
    bits = (bits ^ bits >> 15) * 0x735a2d97;
    return (bits ^ bits >> 15) / 4294967296.0;
  }
  double between(double low, double high) { return low + (high - low) * next(); }
  // Returns a number in (-1, 1), most often close to 0.
  double bell() {
    double sum = 0;
    for (int i = 0; i < 3; ++i) sum += next();
    return sum / 1.5 - 1;
  }

 private:
  std::uint32_t state_;
};

// A swing between -1 and 1, a whole number of times per loop.
double swing(double time, int turns, double offset) {
  return std::sin(fullTurn * (turns * time + offset));
}

double fraction(double value) {
  return value - std::floor(value);
}

// Returns the position of a frame in the loop, in [0, 1).
double loopTime(const Scene& scene, int frame) {
  return static_cast<double>(frame) / scene.frameCount;
}

void setColor(cairo_t* context, const Color& color, double alpha = 1) {
  cairo_set_source_rgba(context, color.red, color.green, color.blue, alpha);
}

void addStop(const Pattern& pattern, double offset, const Color& color, double alpha = 1) {
  cairo_pattern_add_color_stop_rgba(pattern.get(), offset, color.red, color.green, color.blue,
                                    alpha);
}

// Draws a soft spot of light that fades out toward the edge of an ellipse.
void drawGlow(cairo_t* context, double x, double y, double radiusX, double radiusY,
              const Color& color, double alpha) {
  constexpr int stopCount = 8;
  const Pattern glow(cairo_pattern_create_radial(0, 0, 0, 0, 0, 1));
  for (int i = 0; i <= stopCount; ++i) {
    const double distance = static_cast<double>(i) / stopCount;
    addStop(glow, distance, color, alpha * std::pow(1 - distance * distance, 2.5));
  }
  cairo_save(context);
  cairo_translate(context, x, y);
  cairo_scale(context, radiusX, radiusY);
  cairo_set_source(context, glow.get());
  cairo_arc(context, 0, 0, 1, 0, fullTurn);
  cairo_fill(context);
  cairo_restore(context);
}

void drawSky(cairo_t* context, const Scene& scene) {
  const Pattern sky(cairo_pattern_create_linear(0, 0, 0, scene.skyFoot));
  addStop(sky, 0.00, rgb(0x0a0f2c));
  addStop(sky, 0.25, rgb(0x171c4c));
  addStop(sky, 0.48, rgb(0x36316c));
  addStop(sky, 0.66, rgb(0x684a82));
  addStop(sky, 0.80, rgb(0xa8688a));
  addStop(sky, 0.92, rgb(0xcf8a86));
  addStop(sky, 1.00, rgb(0xd99b8a));
  cairo_set_source(context, sky.get());
  cairo_paint(context);
}

void drawStars(cairo_t* context, const Scene& scene, double time) {
  Chance chance(7);
  for (int i = 0; i < scene.starCount; ++i) {
    const double x = chance.between(0, scene.width);
    const double y = scene.lowestStar * std::pow(chance.next(), 1.3);
    const double size = 0.45 + 0.85 * std::pow(chance.next(), 4);
    const double twinkle = chance.next() < 0.4 ? 0.45 : 0;
    const int turns = chance.next() < 0.5 ? 1 : 2;
    const double shine = 1 - twinkle * (1 + swing(time, turns, chance.next()));
    const double fade = 1 - y / scene.lowestStar;
    setColor(context, moonlight, (0.25 + 0.65 * fade) * shine);
    cairo_arc(context, x, y, size, 0, fullTurn);
    cairo_fill(context);
    if (size > 1) drawGlow(context, x, y, 6 * size, 6 * size, moonlight, 0.22 * fade * shine);
  }
}

void drawMoon(cairo_t* context, const Scene& scene) {
  drawGlow(context, scene.moonX, scene.moonY, 7 * scene.moonRadius, 7 * scene.moonRadius,
           rgb(0xd9a6c0), scene.moonHaze);
  drawGlow(context, scene.moonX, scene.moonY, 2.4 * scene.moonRadius, 2.4 * scene.moonRadius,
           moonlight, 0.40);
  cairo_save(context);
  cairo_arc(context, scene.moonX, scene.moonY, scene.moonRadius, 0, fullTurn);
  setColor(context, moonlight);
  cairo_fill_preserve(context);
  cairo_clip(context);
  struct Sea {
    double x;
    double y;
    double radius;
  };
  constexpr std::array<Sea, 5> seas{
      {{-8, -9, 15}, {3, -3, 14}, {10, -9, 9}, {-12, 5, 13}, {6, 13, 8}}};
  for (const Sea& sea : seas) {
    drawGlow(context, scene.moonX + sea.x, scene.moonY + sea.y, sea.radius, sea.radius,
             rgb(0xd8b3a6), 0.55);
  }
  cairo_restore(context);
}

// A smooth line of hills through random heights from 0 to 1, one at every whole number.
double hills(double position, std::uint32_t seed) {
  const auto index = static_cast<std::uint32_t>(position);
  const double left = Chance(seed + 7919 * index).next();
  const double right = Chance(seed + 7919 * (index + 1)).next();
  const double along = position - index;
  return left + (right - left) * along * along * (3 - 2 * along);
}

double ridgeTop(const Scene& scene, const Ridge& ridge, double x) {
  constexpr int octaveCount = 5;
  double relief = 0;
  double amplitude = 0.55;
  double scale = 1 / ridge.wavelength;
  for (std::uint32_t octave = 0; octave < octaveCount; ++octave) {
    const double height = hills(x * scale, ridge.seed + octave);
    relief += amplitude * (1 - std::abs(2 * height - 1));
    amplitude *= 0.45;
    scale *= 2.1;
  }
  const double side = 2 * x / scene.width - 1;
  const double rise = (side < 0 ? ridge.riseAtLeft : ridge.riseAtRight) * side * side;
  return ridge.base - ridge.relief * relief - rise;
}

void drawRidge(cairo_t* context, const Scene& scene, const Ridge& ridge) {
  cairo_move_to(context, 0, scene.waterline);
  for (int x = 0; x <= scene.width; ++x) cairo_line_to(context, x, ridgeTop(scene, ridge, x));
  cairo_line_to(context, scene.width, scene.waterline);
  const double highest =
      ridge.base - ridge.relief - std::max(ridge.riseAtLeft, ridge.riseAtRight) * 0.5;
  const Pattern slope(cairo_pattern_create_linear(0, highest, 0, scene.waterline));
  addStop(slope, 0, ridge.top);
  addStop(slope, 1, ridge.foot);
  cairo_set_source(context, slope.get());
  cairo_fill(context);
}

// Draws a spruce: a stack of triangles, each half hidden by the one above it.
void drawSpruce(cairo_t* context, double x, double foot, double height) {
  constexpr int tierCount = 6;
  constexpr double slimness = 0.19;
  const double tierHeight = height / tierCount;
  for (int tier = 1; tier <= tierCount; ++tier) {
    const double reach = slimness * tierHeight * tier;
    const double base = foot - height + tierHeight * tier;
    cairo_move_to(context, x, base - tierHeight * std::min(tier, 2));
    cairo_line_to(context, x + reach, base);
    cairo_line_to(context, x - reach, base);
    cairo_fill(context);
  }
}

// Draws spruces along the shore, taller toward the edges of the picture.
void drawShoreForest(cairo_t* context, const Scene& scene) {
  const Ridge& shore = scene.ridges.back();
  Chance chance(5);
  setColor(context, shore.top);
  for (int i = 0; i < scene.spruceCount; ++i) {
    const double side = chance.between(-1, 1);
    const double height = 8 + 34 * std::pow(std::abs(side), 2.2) * chance.between(0.6, 1.1);
    const double x = (side + 1) / 2 * scene.width;
    drawSpruce(context, x, ridgeTop(scene, shore, x) + 6, height * chance.between(0.7, 1.1));
  }
}

// Draws banks of mist. Each drifts to the right, appears and fades, in its own part of the loop.
void drawMist(cairo_t* context, const Scene& scene, double time, std::size_t layer) {
  constexpr double drift = 46;
  Chance chance(100 + static_cast<std::uint32_t>(layer));
  const double height = scene.ridges[layer].base + 4;
  for (int i = 0; i < scene.mistBankCount; ++i) {
    const double phase = fraction(time + chance.next());
    const double x =
        scene.width * (i + chance.next()) / scene.mistBankCount + drift * (phase - 0.5);
    const double y = height + chance.between(-8, 8);
    const double thickness = std::pow(std::sin(std::numbers::pi * phase), 2);
    const double length = chance.between(70, 130);
    drawGlow(context, x, y, length, chance.between(9, 17), mistLight, 0.55 * thickness);
  }
}

void drawLand(cairo_t* context, const Scene& scene, double mistTime) {
  for (std::size_t layer = 0; layer < scene.ridges.size(); ++layer) {
    drawRidge(context, scene, scene.ridges[layer]);
    if (layer + 1 < scene.ridges.size()) drawMist(context, scene, mistTime, layer);
  }
  drawShoreForest(context, scene);
}

// Returns how far, in rows, the waves bend a reflection at a place on the lake. Closer waves look
// larger and slower.
double waveAt(const Scene& scene, double x, double depth, double time) {
  struct Wave {
    double along;
    double across;
    double height;
    int turns;
  };
  constexpr std::array<Wave, 3> waves{
      {{7.0, 2.6, 0.50, 1}, {11.0, -4.2, 0.32, 2}, {17.0, 7.5, 0.18, -1}}};
  constexpr double minNearness = 0.16;
  const double near = depth / scene.waterDepth() + minNearness;
  double height = 0;
  for (const Wave& wave : waves) {
    const double place =
        wave.along / near + scene.wavesAcross * wave.across * (x / scene.width - 0.5) / near;
    height += wave.height * swing(time, wave.turns, place / 2);
  }
  return height * near;
}

std::uint32_t mix(std::uint32_t from, std::uint32_t to, double share) {
  std::uint32_t mixed = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    const double start = from >> shift & 255;
    const double end = to >> shift & 255;
    mixed |= static_cast<std::uint32_t>(std::lround(start + (end - start) * share)) << shift;
  }
  return mixed;
}

std::uint32_t* pixelsOf(cairo_surface_t* surface) {
  return reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface));
}

// Mirrors the scene above the waterline, bent by the waves.
void drawReflection(cairo_surface_t* surface, const Scene& scene, double time) {
  // Rows of the scene per row of water. With more, the moon would be mirrored, too.
  constexpr double reach = 0.8;
  const int lastLandRow = static_cast<int>(scene.waterline) - 1;
  cairo_surface_flush(surface);
  std::uint32_t* pixels = pixelsOf(surface);
  for (int y = lastLandRow + 1; y < scene.height; ++y) {
    const double depth = y + 0.5 - scene.waterline;
    for (int x = 0; x < scene.width; ++x) {
      const double bend = scene.waveRows * waveAt(scene, x, depth, time);
      const double row = std::clamp(scene.waterline - 0.5 - reach * depth + bend, 0.0,
                                    static_cast<double>(lastLandRow));
      const int above = std::min(static_cast<int>(row), lastLandRow - 1);
      const std::uint32_t* source = pixels + above * scene.width + x;
      pixels[y * scene.width + x] = mix(source[0], source[scene.width], row - above);
    }
  }
  cairo_surface_mark_dirty(surface);
}

// Darkens the water toward the viewer.
void drawDepth(cairo_t* context, const Scene& scene) {
  const Pattern depth(cairo_pattern_create_linear(0, scene.waterline, 0, scene.height));
  addStop(depth, 0, deepWater, 0.16);
  addStop(depth, 1, deepWater, 0.66);
  cairo_set_source(context, depth.get());
  cairo_rectangle(context, 0, scene.waterline, scene.width, scene.waterDepth());
  cairo_fill(context);
}

// Draws a flat, pointed spot of light on the water.
void drawFleck(cairo_t* context, double x, double y, double length, double thickness,
               const Color& color, double alpha) {
  setColor(context, color, alpha);
  cairo_move_to(context, x - length, y);
  cairo_curve_to(context, x - length / 3, y - thickness, x + length / 3, y - thickness, x + length,
                 y);
  cairo_curve_to(context, x + length / 3, y + thickness, x - length / 3, y + thickness, x - length,
                 y);
  cairo_fill(context);
}

// Draws the moonlight on the water: spots that flash and fade, each at its own moment.
void drawGlitter(cairo_t* context, const Scene& scene, double time) {
  constexpr int fleckCount = 330;
  Chance chance(17);
  drawGlow(context, scene.moonX, scene.waterline + 105, 70, 110, moonlight, 0.17);
  for (int i = 0; i < fleckCount; ++i) {
    const double nearness = std::pow(chance.next(), 1.25);
    const double y = scene.waterline + 3 + nearness * (scene.waterDepth() - 40);
    const double spread = 9 + 46 * nearness;
    const double offset = chance.bell();
    const int turns = chance.next() < 0.5 ? 1 : 2;
    const double phase = turns * time + chance.next();
    const double flash = std::pow(std::max(0.0, std::sin(fullTurn * phase)), 1.5);
    const double drift = 2.5 * std::cos(fullTurn * phase);
    const double length = (2 + 10 * nearness) * chance.between(0.5, 1.2);
    const double alpha = 0.95 * (1 - std::abs(offset)) * (1 - 0.45 * nearness);
    if (flash <= 0) continue;
    drawFleck(context, scene.moonX + spread * offset + drift, y, length * (0.6 + 0.4 * flash),
              0.6 + 1.5 * nearness, moonlight, alpha * flash);
  }
}

void drawLanternReflection(cairo_t* context, double x, double y, double time) {
  constexpr int fleckCount = 16;
  constexpr double trailLength = 62;
  Chance chance(29);
  for (int i = 0; i < fleckCount; ++i) {
    const double along = static_cast<double>(i) / fleckCount;
    const double flicker = 0.62 + 0.38 * swing(time, 1 + i % 2, chance.next());
    const double sway = (1 + 3 * along) * swing(time, 1, chance.next());
    drawFleck(context, x + sway, y + trailLength * along, 3 + 5 * along, 1.6, lanternLight,
              0.9 * (1 - along) * flicker);
  }
}

// Draws a rowboat with a lantern on a pole at its bow.
void drawBoat(cairo_t* context, const Scene& scene, double time) {
  constexpr double bowX = 25;
  constexpr double lanternY = -21;
  const double rock = 0.022 * swing(time, 1, 0);
  const double bob = 0.9 * swing(time, 1, 0.2);
  drawFleck(context, scene.boatX, scene.boatY + 8, 42, 4.5, silhouette, 0.55);
  drawLanternReflection(context, scene.boatX + bowX + 5, scene.boatY + 14, time);
  cairo_save(context);
  cairo_translate(context, scene.boatX, scene.boatY + bob);
  cairo_rotate(context, rock);
  setColor(context, silhouette);
  cairo_move_to(context, -35, -5);
  cairo_curve_to(context, -18, 1, 14, 1, 37, -9);
  cairo_curve_to(context, 32, 2, 26, 7, 18, 8);
  cairo_line_to(context, -24, 8);
  cairo_curve_to(context, -30, 6, -33, 1, -35, -5);
  cairo_fill(context);
  cairo_set_line_width(context, 1.3);
  cairo_move_to(context, bowX - 1, -2);
  cairo_curve_to(context, bowX - 2, -16, bowX - 2, -30, bowX + 5, lanternY - 5);
  cairo_stroke(context);
  const double flicker = 1 + 0.06 * swing(time, 2, 0.1) + 0.05 * swing(time, 3, 0.4);
  drawGlow(context, bowX + 5, lanternY, 46, 46, lanternLight, 0.42 * flicker);
  drawGlow(context, bowX + 5, lanternY, 13, 13, lanternLight, 0.75 * flicker);
  setColor(context, rgb(0xffe3a8));
  cairo_rectangle(context, bowX + 3, lanternY - 3.5, 4, 7);
  cairo_fill(context);
  cairo_restore(context);
}

void drawReed(cairo_t* context, double foot, double x, double height, double lean) {
  const double thickness = 0.8 + height / 90;
  cairo_move_to(context, x - thickness, foot);
  cairo_curve_to(context, x - thickness, foot - height * 0.5, x + lean * 0.3, foot - height * 0.8,
                 x + lean, foot - height);
  cairo_curve_to(context, x + lean * 0.3 + thickness, foot - height * 0.75, x + thickness,
                 foot - height * 0.5, x + thickness, foot);
  cairo_fill(context);
}

// Draws the near bank: reeds that are taller toward both edges of the picture.
void drawReeds(cairo_t* context, const Scene& scene, double time) {
  Chance chance(41);
  setColor(context, silhouette);
  for (int i = 0; i < scene.reedCount; ++i) {
    const double side = chance.between(-1, 1);
    const double height =
        14 + scene.reedHeight * std::pow(std::abs(side), scene.reedSlope) * chance.between(0.35, 1);
    const double lean = height * 0.28 * chance.bell();
    const double sway = height * 0.012 * swing(time, 1, 0.3 * side);
    drawReed(context, scene.height + 4, (side + 1) / 2 * scene.width, height, lean + sway);
  }
  drawGlow(context, 0.5 * scene.width, scene.height + 8, 0.9 * scene.width, 44, silhouette, 1);
}

void drawFireflies(cairo_t* context, const Scene& scene, double time) {
  Chance chance(53);
  for (int i = 0; i < scene.fireflyCount; ++i) {
    const double side = chance.next() < 0.5 ? -1 : 1;
    const double homeX = scene.width * (0.5 + side * chance.between(0.12, 0.47));
    const double homeY = chance.between(scene.height - 115, scene.height - 18);
    const double wander = 12 * swing(time, 1, chance.next());
    const double x = homeX + wander + 4 * swing(time, 2, chance.next());
    const double y = homeY + 9 * swing(time, 1, chance.next());
    const double shine = std::pow(0.5 + 0.5 * swing(time, 1, chance.next()), 1.6);
    drawGlow(context, x, y, 10, 10, fireflyLight, 0.55 * shine);
    drawGlow(context, x, y, 2.6, 2.6, fireflyLight, shine);
  }
}

Picture drawFrame(const Scene& scene, int frame) {
  const Handle<cairo_surface_t, cairo_surface_destroy> surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, scene.width, scene.height));
  const Handle<cairo_t, cairo_destroy> drawing(cairo_create(surface.get()));
  cairo_t* context = drawing.get();
  const double time = loopTime(scene, frame);
  const double slowTime = loopTime(scene, frame - frame % scene.skyHold);
  drawSky(context, scene);
  drawStars(context, scene, slowTime);
  drawMoon(context, scene);
  drawLand(context, scene, slowTime);
  drawReflection(surface.get(), scene, time);
  drawDepth(context, scene);
  drawMist(context, scene, slowTime, scene.ridges.size() - 1);
  drawGlitter(context, scene, time);
  drawBoat(context, scene, time);
  drawReeds(context, scene, time);
  drawFireflies(context, scene, time);
  cairo_surface_flush(surface.get());
  Picture picture(pixelsOf(surface.get()), pixelsOf(surface.get()) + scene.width * scene.height);
  for (std::uint32_t& pixel : picture) pixel &= 0xffffff;
  return picture;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string kind = argc == 3 ? argv[1] : "";
  if (kind != "upright" && kind != "wide") {
    std::cerr << "usage: draw_sample upright|wide OUT.gif\n";
    return 2;
  }
  const Scene& scene = kind == "wide" ? wide : upright;
  try {
    std::vector<Picture> frames;
    for (int frame = 0; frame < scene.frameCount; ++frame) {
      frames.push_back(drawFrame(scene, frame));
    }
    writeLoopGif(argv[2], {scene.width, scene.height, scene.delayCentiseconds}, frames);
  } catch (const std::exception& error) {
    std::cerr << "draw_sample: " << argv[2] << ": " << error.what() << '\n';
    return 1;
  }
  return 0;
}
