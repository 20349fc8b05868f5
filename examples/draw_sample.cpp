// Draws the sample wallpaper: an evening lake among misty mountains, under a full moon. Stars
// twinkle, mist drifts, the moon glitters on the water, a boat with a lantern rocks and fireflies
// wander. Everything moves in whole turns of one loop, so the last frame leads into the first.
//
// Usage: draw_sample OUT.gif
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
#include <vector>

#include <cairo.h>

#include "loop_gif.h"

namespace {

constexpr int kWidth = 360;
constexpr int kHeight = 690;
constexpr int kFrameCount = 60;
constexpr int kDelayCentiseconds = 8;
constexpr int kSkyHold = 3;  // Frames for which stars and mist stand still: most frames stay small.

constexpr double kWaterline = 432;
constexpr double kWaterDepth = kHeight - kWaterline;
constexpr double kMoonX = 298;
constexpr double kMoonY = 186;
constexpr double kMoonRadius = 25;

constexpr double kTurn = 2 * std::numbers::pi;

struct Color {
  double red, green, blue;
};

constexpr Color rgb(std::uint32_t hex) {
  return {(hex >> 16 & 255) / 255.0, (hex >> 8 & 255) / 255.0, (hex & 255) / 255.0};
}

constexpr Color kMoonlight = rgb(0xfff1d6);
constexpr Color kLanternLight = rgb(0xffb45e);
constexpr Color kFireflyLight = rgb(0xf4e58a);
constexpr Color kMistLight = rgb(0xc79ab4);
constexpr Color kDeepWater = rgb(0x0c1130);
constexpr Color kSilhouette = rgb(0x070a1c);

template <auto destroy>
struct Destroyer {
  void operator()(auto* object) const { destroy(object); }
};
template <typename T, auto destroy>
using Handle = std::unique_ptr<T, Destroyer<destroy>>;
using Pattern = Handle<cairo_pattern_t, cairo_pattern_destroy>;

// The same stream of numbers in [0, 1) for the same seed, on every platform.
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
  // Most often close to 0, within (-1, 1).
  double bell() {
    double sum = 0;
    for (int i = 0; i < 3; ++i) sum += next();
    return sum / 1.5 - 1;
  }

 private:
  std::uint32_t state_;
};

// A swing between -1 and 1 that goes `turns` whole turns a loop.
double swing(double time, int turns, double offset) {
  return std::sin(kTurn * (turns * time + offset));
}

double fraction(double value) {
  return value - std::floor(value);
}

// Where in the loop a frame is, in [0, 1).
double loopTime(int frame) {
  return static_cast<double>(frame) / kFrameCount;
}

void setColor(cairo_t* cr, const Color& color, double alpha = 1) {
  cairo_set_source_rgba(cr, color.red, color.green, color.blue, alpha);
}

void addStop(const Pattern& pattern, double offset, const Color& color, double alpha = 1) {
  cairo_pattern_add_color_stop_rgba(pattern.get(), offset, color.red, color.green, color.blue,
                                    alpha);
}

// A soft spot of light that fades to nothing at the edge of an ellipse.
void drawGlow(cairo_t* cr, double x, double y, double radius_x, double radius_y, const Color& color,
              double alpha) {
  constexpr int kStops = 8;
  const Pattern glow(cairo_pattern_create_radial(0, 0, 0, 0, 0, 1));
  for (int i = 0; i <= kStops; ++i) {
    const double distance = static_cast<double>(i) / kStops;
    addStop(glow, distance, color, alpha * std::pow(1 - distance * distance, 2.5));
  }
  cairo_save(cr);
  cairo_translate(cr, x, y);
  cairo_scale(cr, radius_x, radius_y);
  cairo_set_source(cr, glow.get());
  cairo_arc(cr, 0, 0, 1, 0, kTurn);
  cairo_fill(cr);
  cairo_restore(cr);
}

void drawSky(cairo_t* cr) {
  const Pattern sky(cairo_pattern_create_linear(0, 0, 0, kWaterline));
  addStop(sky, 0.00, rgb(0x0a0f2c));
  addStop(sky, 0.25, rgb(0x171c4c));
  addStop(sky, 0.48, rgb(0x36316c));
  addStop(sky, 0.66, rgb(0x684a82));
  addStop(sky, 0.80, rgb(0xa8688a));
  addStop(sky, 0.92, rgb(0xcf8a86));
  addStop(sky, 1.00, rgb(0xd99b8a));
  cairo_set_source(cr, sky.get());
  cairo_paint(cr);
}

void drawStars(cairo_t* cr, double time) {
  constexpr int kStars = 130;
  constexpr double kLowest = 290;
  Chance chance(7);
  for (int i = 0; i < kStars; ++i) {
    const double x = chance.between(0, kWidth);
    const double y = kLowest * std::pow(chance.next(), 1.3);
    const double size = 0.45 + 0.85 * std::pow(chance.next(), 4);
    const double twinkle = chance.next() < 0.4 ? 0.45 : 0;
    const int turns = chance.next() < 0.5 ? 1 : 2;
    const double shine = 1 - twinkle * (1 + swing(time, turns, chance.next()));
    const double fade = 1 - y / kLowest;
    setColor(cr, kMoonlight, (0.25 + 0.65 * fade) * shine);
    cairo_arc(cr, x, y, size, 0, kTurn);
    cairo_fill(cr);
    if (size > 1) drawGlow(cr, x, y, 6 * size, 6 * size, kMoonlight, 0.22 * fade * shine);
  }
}

void drawMoon(cairo_t* cr) {
  drawGlow(cr, kMoonX, kMoonY, 7 * kMoonRadius, 7 * kMoonRadius, rgb(0xd9a6c0), 0.36);
  drawGlow(cr, kMoonX, kMoonY, 2.4 * kMoonRadius, 2.4 * kMoonRadius, kMoonlight, 0.40);
  cairo_save(cr);
  cairo_arc(cr, kMoonX, kMoonY, kMoonRadius, 0, kTurn);
  setColor(cr, kMoonlight);
  cairo_fill_preserve(cr);
  cairo_clip(cr);
  struct Sea {
    double x, y, radius;
  };
  constexpr std::array<Sea, 5> kSeas{
      {{-8, -9, 15}, {3, -3, 14}, {10, -9, 9}, {-12, 5, 13}, {6, 13, 8}}};
  for (const Sea& sea : kSeas) {
    drawGlow(cr, kMoonX + sea.x, kMoonY + sea.y, sea.radius, sea.radius, rgb(0xd8b3a6), 0.55);
  }
  cairo_restore(cr);
}

// A smooth chain of hills through random heights from 0 to 1, a new height every whole number.
double hills(double position, std::uint32_t seed) {
  const auto index = static_cast<std::uint32_t>(position);
  const double left = Chance(seed + 7919 * index).next();
  const double right = Chance(seed + 7919 * (index + 1)).next();
  const double along = position - index;
  return left + (right - left) * along * along * (3 - 2 * along);
}

struct Ridge {
  double base;       // The height of the valley between the slopes.
  double relief;     // How much peaks rise and fall.
  double rise_left;  // How far the ridge climbs to either edge of the picture.
  double rise_right;
  double wavelength;
  std::uint32_t seed;
  Color top;
  Color foot;
};

constexpr std::array<Ridge, 5> kRidges{{
    {358, 82, 6, 18, 88, 2, rgb(0x8a5f8c), rgb(0xc48a94)},
    {378, 62, 42, 10, 74, 11, rgb(0x66508a), rgb(0xa87894)},
    {400, 50, 16, 66, 66, 23, rgb(0x453f7a), rgb(0x84649a)},
    {418, 34, 66, 24, 56, 31, rgb(0x2b2d62), rgb(0x574b86)},
    {430, 14, 26, 40, 60, 47, rgb(0x141a42), rgb(0x1d2350)},
}};

double ridgeTop(const Ridge& ridge, double x) {
  constexpr int kOctaves = 5;
  double relief = 0;
  double amplitude = 0.55;
  double scale = 1 / ridge.wavelength;
  for (std::uint32_t octave = 0; octave < kOctaves; ++octave) {
    const double height = hills(x * scale, ridge.seed + octave);
    relief += amplitude * (1 - std::abs(2 * height - 1));
    amplitude *= 0.45;
    scale *= 2.1;
  }
  const double side = 2 * x / kWidth - 1;
  const double rise = (side < 0 ? ridge.rise_left : ridge.rise_right) * side * side;
  return ridge.base - ridge.relief * relief - rise;
}

void drawRidge(cairo_t* cr, const Ridge& ridge) {
  cairo_move_to(cr, 0, kWaterline);
  for (int x = 0; x <= kWidth; ++x) cairo_line_to(cr, x, ridgeTop(ridge, x));
  cairo_line_to(cr, kWidth, kWaterline);
  const double highest =
      ridge.base - ridge.relief - std::max(ridge.rise_left, ridge.rise_right) * 0.5;
  const Pattern slope(cairo_pattern_create_linear(0, highest, 0, kWaterline));
  addStop(slope, 0, ridge.top);
  addStop(slope, 1, ridge.foot);
  cairo_set_source(cr, slope.get());
  cairo_fill(cr);
}

// A stack of triangles, each half hidden by the one above it.
void drawSpruce(cairo_t* cr, double x, double foot, double height) {
  constexpr int kTiers = 6;
  constexpr double kSlimness = 0.19;
  const double tier_height = height / kTiers;
  for (int tier = 1; tier <= kTiers; ++tier) {
    const double reach = kSlimness * tier_height * tier;
    const double base = foot - height + tier_height * tier;
    cairo_move_to(cr, x, base - tier_height * std::min(tier, 2));
    cairo_line_to(cr, x + reach, base);
    cairo_line_to(cr, x - reach, base);
    cairo_fill(cr);
  }
}

// Spruces stand along the shore, taller toward the edges of the picture.
void drawShoreForest(cairo_t* cr, const Ridge& shore) {
  constexpr int kSpruces = 110;
  Chance chance(5);
  setColor(cr, shore.top);
  for (int i = 0; i < kSpruces; ++i) {
    const double side = chance.between(-1, 1);
    const double height = 8 + 34 * std::pow(std::abs(side), 2.2) * chance.between(0.6, 1.1);
    const double x = (side + 1) / 2 * kWidth;
    drawSpruce(cr, x, ridgeTop(shore, x) + 6, height * chance.between(0.7, 1.1));
  }
}

// Banks of mist: each drifts to the right, gathers and melts away, in its own part of the loop.
void drawMist(cairo_t* cr, double time, std::size_t layer) {
  constexpr int kBanks = 5;
  constexpr double kDrift = 46;
  Chance chance(100 + static_cast<std::uint32_t>(layer));
  const double height = kRidges[layer].base + 4;
  for (int i = 0; i < kBanks; ++i) {
    const double phase = fraction(time + chance.next());
    const double x = kWidth * (i + chance.next()) / kBanks + kDrift * (phase - 0.5);
    const double y = height + chance.between(-8, 8);
    const double thickness = std::pow(std::sin(std::numbers::pi * phase), 2);
    const double length = chance.between(70, 130);
    drawGlow(cr, x, y, length, chance.between(9, 17), kMistLight, 0.55 * thickness);
  }
}

void drawLand(cairo_t* cr, double mist_time) {
  for (std::size_t layer = 0; layer < kRidges.size(); ++layer) {
    drawRidge(cr, kRidges[layer]);
    if (layer + 1 < kRidges.size()) drawMist(cr, mist_time, layer);
  }
  drawShoreForest(cr, kRidges.back());
}

// How far, in rows, the waves bend a reflection at a place on the lake. Waves look larger and
// slower the closer they are.
double waveAt(double x, double depth, double time) {
  struct Wave {
    double along, across, height;
    int turns;
  };
  constexpr std::array<Wave, 3> kWaves{
      {{7.0, 2.6, 0.50, 1}, {11.0, -4.2, 0.32, 2}, {17.0, 7.5, 0.18, -1}}};
  constexpr double kNearness = 0.16;
  const double near = depth / kWaterDepth + kNearness;
  double height = 0;
  for (const Wave& wave : kWaves) {
    const double place = wave.along / near + wave.across * (x / kWidth - 0.5) / near;
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

// Mirrors what stands above the waterline, bent by the waves.
void drawReflection(cairo_surface_t* surface, double time) {
  constexpr double kReach = 0.8;  // Rows of the view a row of water shows: the moon stays out.
  constexpr double kWaveRows = 5.5;
  constexpr int kLastLandRow = static_cast<int>(kWaterline) - 1;
  cairo_surface_flush(surface);
  std::uint32_t* pixels = pixelsOf(surface);
  for (int y = kLastLandRow + 1; y < kHeight; ++y) {
    const double depth = y + 0.5 - kWaterline;
    for (int x = 0; x < kWidth; ++x) {
      const double bend = kWaveRows * waveAt(x, depth, time);
      const double row = std::clamp(kWaterline - 0.5 - kReach * depth + bend, 0.0,
                                    static_cast<double>(kLastLandRow));
      const int above = std::min(static_cast<int>(row), kLastLandRow - 1);
      const std::uint32_t* source = pixels + above * kWidth + x;
      pixels[y * kWidth + x] = mix(source[0], source[kWidth], row - above);
    }
  }
  cairo_surface_mark_dirty(surface);
}

// Darkens the water toward the viewer.
void drawDepth(cairo_t* cr) {
  const Pattern depth(cairo_pattern_create_linear(0, kWaterline, 0, kHeight));
  addStop(depth, 0, kDeepWater, 0.16);
  addStop(depth, 1, kDeepWater, 0.66);
  cairo_set_source(cr, depth.get());
  cairo_rectangle(cr, 0, kWaterline, kWidth, kWaterDepth);
  cairo_fill(cr);
}

// A flat, pointed fleck of light on the water.
void drawFleck(cairo_t* cr, double x, double y, double length, double thickness, const Color& color,
               double alpha) {
  setColor(cr, color, alpha);
  cairo_move_to(cr, x - length, y);
  cairo_curve_to(cr, x - length / 3, y - thickness, x + length / 3, y - thickness, x + length, y);
  cairo_curve_to(cr, x + length / 3, y + thickness, x - length / 3, y + thickness, x - length, y);
  cairo_fill(cr);
}

// The path of moonlight toward the viewer: flecks that flash and fade, each at its own moment.
void drawGlitter(cairo_t* cr, double time) {
  constexpr int kFlecks = 330;
  Chance chance(17);
  drawGlow(cr, kMoonX, kWaterline + 105, 70, 110, kMoonlight, 0.17);
  for (int i = 0; i < kFlecks; ++i) {
    const double nearness = std::pow(chance.next(), 1.25);
    const double y = kWaterline + 3 + nearness * (kWaterDepth - 40);
    const double spread = 9 + 46 * nearness;
    const double offset = chance.bell();
    const int turns = chance.next() < 0.5 ? 1 : 2;
    const double phase = turns * time + chance.next();
    const double flash = std::pow(std::max(0.0, std::sin(kTurn * phase)), 1.5);
    const double drift = 2.5 * std::cos(kTurn * phase);
    const double length = (2 + 10 * nearness) * chance.between(0.5, 1.2);
    const double alpha = 0.95 * (1 - std::abs(offset)) * (1 - 0.45 * nearness);
    if (flash <= 0) continue;
    drawFleck(cr, kMoonX + spread * offset + drift, y, length * (0.6 + 0.4 * flash),
              0.6 + 1.5 * nearness, kMoonlight, alpha * flash);
  }
}

void drawLanternReflection(cairo_t* cr, double x, double y, double time) {
  constexpr int kFlecks = 16;
  constexpr double kLength = 62;
  Chance chance(29);
  for (int i = 0; i < kFlecks; ++i) {
    const double along = static_cast<double>(i) / kFlecks;
    const double flicker = 0.62 + 0.38 * swing(time, 1 + i % 2, chance.next());
    const double sway = (1 + 3 * along) * swing(time, 1, chance.next());
    drawFleck(cr, x + sway, y + kLength * along, 3 + 5 * along, 1.6, kLanternLight,
              0.9 * (1 - along) * flicker);
  }
}

// A rowing boat at rest, a lantern hanging from the pole at its bow.
void drawBoat(cairo_t* cr, double time) {
  constexpr double kX = 104;
  constexpr double kY = 528;
  constexpr double kBow = 25;
  constexpr double kLanternY = -21;
  const double rock = 0.022 * swing(time, 1, 0);
  const double bob = 0.9 * swing(time, 1, 0.2);
  drawFleck(cr, kX, kY + 8, 42, 4.5, kSilhouette, 0.55);
  drawLanternReflection(cr, kX + kBow + 5, kY + 14, time);
  cairo_save(cr);
  cairo_translate(cr, kX, kY + bob);
  cairo_rotate(cr, rock);
  setColor(cr, kSilhouette);
  cairo_move_to(cr, -35, -5);
  cairo_curve_to(cr, -18, 1, 14, 1, 37, -9);
  cairo_curve_to(cr, 32, 2, 26, 7, 18, 8);
  cairo_line_to(cr, -24, 8);
  cairo_curve_to(cr, -30, 6, -33, 1, -35, -5);
  cairo_fill(cr);
  cairo_set_line_width(cr, 1.3);
  cairo_move_to(cr, kBow - 1, -2);
  cairo_curve_to(cr, kBow - 2, -16, kBow - 2, -30, kBow + 5, kLanternY - 5);
  cairo_stroke(cr);
  const double flicker = 1 + 0.06 * swing(time, 2, 0.1) + 0.05 * swing(time, 3, 0.4);
  drawGlow(cr, kBow + 5, kLanternY, 46, 46, kLanternLight, 0.42 * flicker);
  drawGlow(cr, kBow + 5, kLanternY, 13, 13, kLanternLight, 0.75 * flicker);
  setColor(cr, rgb(0xffe3a8));
  cairo_rectangle(cr, kBow + 3, kLanternY - 3.5, 4, 7);
  cairo_fill(cr);
  cairo_restore(cr);
}

void drawReed(cairo_t* cr, double x, double height, double lean) {
  constexpr double kFoot = kHeight + 4;
  const double thickness = 0.8 + height / 90;
  cairo_move_to(cr, x - thickness, kFoot);
  cairo_curve_to(cr, x - thickness, kFoot - height * 0.5, x + lean * 0.3, kFoot - height * 0.8,
                 x + lean, kFoot - height);
  cairo_curve_to(cr, x + lean * 0.3 + thickness, kFoot - height * 0.75, x + thickness,
                 kFoot - height * 0.5, x + thickness, kFoot);
  cairo_fill(cr);
}

// The near bank: reeds that grow taller toward both edges of the picture.
void drawReeds(cairo_t* cr, double time) {
  constexpr int kReeds = 120;
  Chance chance(41);
  setColor(cr, kSilhouette);
  for (int i = 0; i < kReeds; ++i) {
    const double side = chance.between(-1, 1);
    const double height = 14 + 120 * std::pow(std::abs(side), 2.4) * chance.between(0.35, 1);
    const double lean = height * 0.28 * chance.bell();
    const double sway = height * 0.012 * swing(time, 1, 0.3 * side);
    drawReed(cr, (side + 1) / 2 * kWidth, height, lean + sway);
  }
  drawGlow(cr, 0.5 * kWidth, kHeight + 8, 0.9 * kWidth, 44, kSilhouette, 1);
}

void drawFireflies(cairo_t* cr, double time) {
  constexpr int kFireflies = 14;
  Chance chance(53);
  for (int i = 0; i < kFireflies; ++i) {
    const double side = chance.next() < 0.5 ? -1 : 1;
    const double home_x = kWidth * (0.5 + side * chance.between(0.12, 0.47));
    const double home_y = chance.between(575, 672);
    const double wander = 12 * swing(time, 1, chance.next());
    const double x = home_x + wander + 4 * swing(time, 2, chance.next());
    const double y = home_y + 9 * swing(time, 1, chance.next());
    const double shine = std::pow(0.5 + 0.5 * swing(time, 1, chance.next()), 1.6);
    drawGlow(cr, x, y, 10, 10, kFireflyLight, 0.55 * shine);
    drawGlow(cr, x, y, 2.6, 2.6, kFireflyLight, shine);
  }
}

Picture drawFrame(int frame) {
  const Handle<cairo_surface_t, cairo_surface_destroy> surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight));
  const Handle<cairo_t, cairo_destroy> context(cairo_create(surface.get()));
  cairo_t* cr = context.get();
  const double time = loopTime(frame);
  const double slow_time = loopTime(frame - frame % kSkyHold);
  drawSky(cr);
  drawStars(cr, slow_time);
  drawMoon(cr);
  drawLand(cr, slow_time);
  drawReflection(surface.get(), time);
  drawDepth(cr);
  drawMist(cr, slow_time, kRidges.size() - 1);
  drawGlitter(cr, time);
  drawBoat(cr, time);
  drawReeds(cr, time);
  drawFireflies(cr, time);
  cairo_surface_flush(surface.get());
  Picture picture(pixelsOf(surface.get()), pixelsOf(surface.get()) + kWidth * kHeight);
  for (std::uint32_t& pixel : picture) pixel &= 0xffffff;
  return picture;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: draw_sample OUT.gif\n";
    return 2;
  }
  try {
    std::vector<Picture> frames;
    for (int frame = 0; frame < kFrameCount; ++frame) frames.push_back(drawFrame(frame));
    writeLoopGif(argv[1], {kWidth, kHeight, kDelayCentiseconds}, frames);
  } catch (const std::exception& error) {
    std::cerr << "draw_sample: " << argv[1] << ": " << error.what() << '\n';
    return 1;
  }
  return 0;
}
