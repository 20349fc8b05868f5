#include "host/artwork/glyphs.h"

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <numbers>

namespace artwork {
namespace {

constexpr double gridSide = 24;
constexpr double strokeWidth = 1.9;

// Strokes and fills shapes on the grid. Angles are in degrees, clockwise from the right.
class Pen {
 public:
  explicit Pen(cairo_t* context) : context_(context) {
    cairo_set_line_width(context_, strokeWidth);
    cairo_set_line_cap(context_, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
  }

  void line(std::initializer_list<Point> points) const {
    addLines(points);
    cairo_stroke(context_);
  }
  void outline(std::initializer_list<Point> points) const {
    addLines(points);
    cairo_close_path(context_);
    cairo_stroke(context_);
  }
  void box(const Rect& rect, double radius) const {
    addRoundedRect(context_, rect, radius);
    cairo_stroke(context_);
  }
  void circle(Point center, double radius) const {
    addCircle(context_, center, radius);
    cairo_stroke(context_);
  }
  void disc(Point center, double radius) const {
    addCircle(context_, center, radius);
    cairo_fill(context_);
  }
  void arc(Point center, double radius, double from, double to) const {
    constexpr double degree = std::numbers::pi / 180;
    cairo_new_sub_path(context_);
    cairo_arc(context_, center.x, center.y, radius, from * degree, to * degree);
    cairo_stroke(context_);
  }
  void curve(Point from, Point handle, Point otherHandle, Point to) const {
    cairo_move_to(context_, from.x, from.y);
    cairo_curve_to(context_, handle.x, handle.y, otherHandle.x, otherHandle.y, to.x, to.y);
    cairo_stroke(context_);
  }

 private:
  void addLines(std::initializer_list<Point> points) const {
    for (const Point& point : points) cairo_line_to(context_, point.x, point.y);
  }

  cairo_t* context_;
};

void drawBook(const Pen& pen) {
  pen.line({{12, 7}, {12, 19.5}});
  for (const double side : {-1.0, 1.0}) {
    const double outer = 12 + side * 9;
    pen.curve({12, 7}, {12 + side * 2, 5}, {12 + side * 6, 4.8}, {outer, 5});
    pen.curve({12, 19.5}, {12 + side * 2, 17.6}, {12 + side * 6, 17.4}, {outer, 17.5});
    pen.line({{outer, 5}, {outer, 17.5}});
  }
}

void drawCalendar(const Pen& pen) {
  pen.box({3.8, 5, 16.4, 15.6}, 2.6);
  pen.line({{4, 10}, {20, 10}});
  for (const double x : {8.3, 15.7}) pen.line({{x, 3}, {x, 6.4}});
  for (const double x : {8.3, 12.0, 15.7}) pen.disc({x, 13.6}, 1.1);
  for (const double x : {8.3, 12.0}) pen.disc({x, 17.2}, 1.1);
}

void drawCamera(const Pen& pen) {
  pen.box({3, 7, 18, 12.5}, 2.8);
  pen.circle({12, 13.2}, 3.5);
  pen.line({{8.6, 6.9}, {9.8, 4.4}, {14.2, 4.4}, {15.4, 6.9}});
}

void drawChat(const Pen& pen) {
  pen.box({3, 4, 18, 13}, 4.2);
  pen.line({{8, 17.2}, {8, 21}, {12.4, 17.2}});
  for (const double x : {8.0, 12.0, 16.0}) pen.disc({x, 10.5}, 1.2);
}

void drawClock(const Pen& pen) {
  pen.circle({12, 12}, 9);
  pen.line({{12, 6.8}, {12, 12}, {15.6, 14.2}});
}

void drawEnvelope(const Pen& pen) {
  pen.box({3, 5.2, 18, 13.6}, 2.6);
  pen.line({{4.2, 7.4}, {12, 13.2}, {19.8, 7.4}});
}

void drawFlashlight(const Pen& pen) {
  pen.outline({{7.6, 2.8},
               {16.4, 2.8},
               {16.4, 7},
               {14.4, 10.4},
               {14.4, 21.2},
               {9.6, 21.2},
               {9.6, 10.4},
               {7.6, 7}});
  pen.line({{7.8, 6.6}, {16.2, 6.6}});
  pen.line({{12, 13}, {12, 14.6}});
}

void drawFolder(const Pen& pen) {
  pen.box({3, 7.4, 18, 12.2}, 2.6);
  pen.line({{4.3, 8}, {5, 4.2}, {9.8, 4.2}, {11.8, 7.2}});
}

void drawGlobe(const Pen& pen) {
  pen.circle({12, 12}, 9);
  pen.line({{3, 12}, {21, 12}});
  for (const double side : {-1.0, 1.0}) {
    const double bulge = 12 + side * 5.4;
    pen.curve({12, 3}, {bulge, 8}, {bulge, 16}, {12, 21});
  }
}

void drawHouse(const Pen& pen) {
  pen.line({{3, 11.6}, {12, 4}, {21, 11.6}});
  pen.line({{5.6, 9.8}, {5.6, 20}, {18.4, 20}, {18.4, 9.8}});
  pen.line({{10, 19.8}, {10, 14.4}, {14, 14.4}, {14, 19.8}});
}

void drawKeypad(const Pen& pen) {
  for (const double x : {5.8, 12.0, 18.2}) {
    for (const double y : {3.6, 9.2, 14.8}) pen.disc({x, y}, 1.75);
  }
  pen.disc({12, 20.4}, 1.75);
}

void drawMap(const Pen& pen) {
  pen.outline({{3, 6}, {9, 4}, {15, 6}, {21, 4}, {21, 18}, {15, 20}, {9, 18}, {3, 20}});
  pen.line({{9, 4}, {9, 18}});
  pen.line({{15, 6}, {15, 20}});
}

void drawMicrophone(const Pen& pen) {
  pen.box({9, 2.8, 6, 11}, 3);
  pen.arc({12, 10.8}, 6.6, 0, 180);
  pen.line({{12, 17.6}, {12, 21}});
}

void drawMusicNote(const Pen& pen) {
  pen.line({{9.4, 17.2}, {9.4, 6.2}, {19.4, 4}, {19.4, 15}});
  pen.disc({7.2, 17.6}, 3.1);
  pen.disc({17.2, 15.4}, 3.1);
}

void drawPencil(const Pen& pen) {
  pen.outline({{4, 20}, {5, 15.4}, {16.4, 4}, {20, 7.6}, {8.6, 19}});
  pen.line({{13.6, 6.8}, {17.2, 10.4}});
  pen.line({{14.6, 20}, {20, 20}});
}

void drawPicture(const Pen& pen) {
  pen.box({3, 4.4, 18, 15.2}, 2.8);
  pen.line({{3.6, 17.2}, {9, 11.4}, {13, 15.6}, {15.4, 13.2}, {20.4, 17.8}});
  pen.disc({15.8, 8.8}, 1.6);
}

void drawPulse(const Pen& pen) {
  pen.line({{2.4, 12.6}, {7, 12.6}, {9.6, 5.4}, {14.2, 18.8}, {16.8, 12.6}, {21.6, 12.6}});
}

void drawSliders(const Pen& pen) {
  const Point knobs[] = {{15.6, 6.4}, {8, 12}, {13.6, 17.6}};
  for (const Point& knob : knobs) {
    pen.line({{3.6, knob.y}, {20.4, knob.y}});
    pen.disc(knob, 2.5);
  }
}

void drawSunAndCloud(const Pen& pen) {
  pen.arc({8.4, 9}, 3.4, 110, 330);
  pen.line({{8.4, 2.6}, {8.4, 2.8}});
  pen.line({{2, 9}, {2.2, 9}});
  pen.line({{3.9, 4.5}, {4, 4.6}});
  pen.line({{12.9, 4.5}, {12.8, 4.6}});
  pen.arc({9.4, 16.6}, 3.4, 90, 270);
  pen.arc({13.8, 13.4}, 4.4, 190, 345);
  pen.arc({18, 16.8}, 3.2, 275, 450);
  pen.line({{9.4, 20}, {18, 20}});
}

void drawTrendLine(const Pen& pen) {
  pen.line({{3.8, 4}, {3.8, 20}, {20.6, 20}});
  pen.line({{7.6, 15.4}, {11.4, 10.6}, {14.6, 13.4}, {20, 6.4}});
}

void drawWallet(const Pen& pen) {
  pen.box({3, 7, 18, 12.6}, 2.6);
  pen.line({{5.4, 6.8}, {16.6, 3.8}, {17.4, 6.8}});
  pen.line({{20.6, 11.4}, {16.2, 11.4}, {16.2, 15.2}, {20.6, 15.2}});
}

using Drawing = void (*)(const Pen&);

// In the order of the enumeration.
constexpr Drawing drawings[] = {
    drawBook,        drawCalendar,  drawCamera, drawChat,    drawClock,  drawEnvelope,
    drawFlashlight,  drawFolder,    drawGlobe,  drawHouse,   drawKeypad, drawMap,
    drawMicrophone,  drawMusicNote, drawPencil, drawPicture, drawPulse,  drawSliders,
    drawSunAndCloud, drawTrendLine, drawWallet};
static_assert(std::size(drawings) == static_cast<std::size_t>(Glyph::Wallet) + 1);

}  // namespace

void drawGlyph(cairo_t* context, Glyph glyph, Point center, double side, const Color& color) {
  const SavedState saved(context);
  cairo_translate(context, center.x - side / 2, center.y - side / 2);
  cairo_scale(context, side / gridSide, side / gridSide);
  cairo_new_path(context);
  setSource(context, color);
  drawings[static_cast<std::size_t>(glyph)](Pen(context));
}

}  // namespace artwork
