#include "host/displays/window_display.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <SDL2/SDL.h>
#include <SDL2/SDL_syswm.h>
#include <X11/Xlib.h>

#include "host/artwork/app_icon.h"
#include "host/artwork/device_frame.h"
#include "host/artwork/painting.h"
#include "host/displays/desktop_cover.h"
#include "host/displays/screen_transition.h"
#include "host/displays/window_keys.h"
#include "host/displays/window_layout.h"
#include "host/displays/x11_connection.h"
#include "host/home_screen/gesture_actions.h"
#include "host/home_screen/gesture_recognizer.h"
#include "host/home_screen/screen_painter.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::UIInterfaceOrientation;
using platform::backend::Region;
using platform::backend::RunLoop;

constexpr ScreenTransition::Duration transitionTime{0.25};

// Around the device.
constexpr artwork::Color surroundings = artwork::rgb(0x2b2d34);

[[noreturn]] void fail(const std::string& reason = SDL_GetError()) {
  throw std::runtime_error("cannot open a window (" + reason +
                           "); without a display, use --display headless");
}

// Returns how many pixels per point the user has set for the X server's programs.
double scaleOfDesktop() {
  constexpr double usualDpi = 96;
  constexpr double maxScale = 4;
  Display* display = openX11Display();
  const char* dpi = XGetDefault(display, "Xft", "dpi");
  const double scale = dpi == nullptr ? 1 : std::strtod(dpi, nullptr) / usualDpi;
  XCloseDisplay(display);
  return std::clamp(scale, 1.0, maxScale);
}

// Returns the largest size of a window's contents, without what a window manager adds around them.
WindowSize roomOnMonitor(double scale) {
  constexpr double titleBar = 44;
  constexpr double sides = 12;
  SDL_Rect usable{};
  if (SDL_GetDisplayUsableBounds(0, &usable) != 0) fail();
  return {std::max(usable.w - static_cast<int>(sides * scale), 1),
          std::max(usable.h - static_cast<int>(titleBar * scale), 1)};
}

artwork::DeviceTop topOf(UIInterfaceOrientation orientation) {
  switch (orientation) {
    case UIInterfaceOrientation::LandscapeLeft:
      return artwork::DeviceTop::Right;
    case UIInterfaceOrientation::LandscapeRight:
      return artwork::DeviceTop::Left;
    case UIInterfaceOrientation::PortraitUpsideDown:
      return artwork::DeviceTop::Down;
    default:
      return artwork::DeviceTop::Up;
  }
}

// Returns a surface on a part of the pixels, which must outlive it.
DrawnSurface surfaceOn(const SDL_Surface& pixels, const cairo_rectangle_int_t& part) {
  constexpr int pixelSize = 4;
  auto* first = static_cast<unsigned char*>(pixels.pixels) +
                static_cast<std::ptrdiff_t>(part.y) * pixels.pitch +
                static_cast<std::ptrdiff_t>(part.x) * pixelSize;
  return DrawnSurface(cairo_image_surface_create_for_data(first, CAIRO_FORMAT_RGB24, part.width,
                                                          part.height, pixels.pitch));
}

}  // namespace

struct FreeSurface {
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

struct WindowDisplay::Impl {
  explicit Impl(SpringBoard& board)
      : springBoard(board),
        painter(board.screen(), 1, board.options().desktop.maxKeptBytes),
        transition(board.options().hasMotion ? transitionTime : ScreenTransition::Duration(0)) {}
  ~Impl();
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  void open();
  void createWindow();
  void giveIcon();
  SDL_SysWMinfo systemInfo() const;
  void showKeysForAWhile();
  // Returns the scale that the user has set, if any.
  std::optional<double> forcedScale() const { return springBoard.options().scale; }
  bool handleEvents();
  void handleEvent(const SDL_Event& event);
  void handlePointer(const SDL_Event& event);
  void handleWindowEvent(Uint8 event);
  // Returns the point of the screen at a pixel of the window.
  artwork::Point pointAt(int x, int y) const;
  void lookIfSeen();
  bool isUnseen() const;
  void draw(bool isAll);
  // Resizes the window after a rotation.
  void followTurn();
  void resizeAround(const WindowSize& size);
  void updateTitle();
  // Finds the place of the device again, and draws what is around its screen.
  void layOut(const SDL_Surface& pixels);
  void drawBody(const SDL_Surface& pixels);
  void drawScreen(const SDL_Surface& pixels, const Region& part);
  // Begins a transition if the screen is another one than what the surface of the window shows.
  void followScene();
  // Returns the pixels of the screen over which the body is drawn.
  std::array<cairo_rectangle_int_t, 4> screenCorners() const;
  // Shows a part of what has been drawn.
  void show(SDL_Surface& pixels, SDL_Surface& shown, const Region& part);
  // Returns the surface to draw on: the window's own or, if that does not have 8 bits per color, a
  // converted one. Returns nullptr if there is no memory for it.
  SDL_Surface* canvas(SDL_Surface& shown);

  SpringBoard& springBoard;
  ScreenPainter painter;
  ScreenTransition transition;
  GestureRecognizer gestures;
  // True while a key is held down.
  bool isRepeating = false;
  SDL_Window* window = nullptr;
  std::optional<DesktopCover> cover;
  bool wasShown = false;
  std::string title;
  DevicePlace place{1, {}};
  // The screen's size, in points, and orientation that the window shows.
  platform::CGSize shownSize;
  UIInterfaceOrientation shownOrientation = UIInterfaceOrientation::Portrait;
  // True until the whole window has been painted anew.
  bool mustLayOut = true;
  // True until the whole screen has been painted anew.
  bool mustPaintAll = true;
  // True until the whole surface has been copied to the window.
  bool mustShowAll = true;
  // The window's surface that was painted last.
  const void* drawnPixels = nullptr;
  std::unique_ptr<SDL_Surface, FreeSurface> converted;
};

WindowDisplay::WindowDisplay(SpringBoard& springBoard)
    : impl_(std::make_unique<Impl>(springBoard)) {
  impl_->open();
}

WindowDisplay::~WindowDisplay() = default;

WindowDisplay::Impl::~Impl() {
  RunLoop::main().setDrawing(nullptr);
  RunLoop::main().clearAlarm(this);
  cover.reset();
  if (window != nullptr) SDL_DestroyWindow(window);
  SDL_Quit();
}

void WindowDisplay::Impl::open() {
  createWindow();
  const auto& x11 = systemInfo().info.x11;
  // SDL draws nothing on such a screen and reports no error.
  constexpr int depthOfDeepColor = 30;
  if (DefaultDepth(x11.display, DefaultScreen(x11.display)) == depthOfDeepColor) {
    fail("screens of 30 bits are not supported, only those of 16 and 24");
  }
  giveIcon();
  XMapWindow(x11.display, x11.window);
  XFlush(x11.display);
  cover.emplace(x11.window, [this] { lookIfSeen(); });
  RunLoop::main().addSource(XConnectionNumber(x11.display), [this] { return handleEvents(); });
  RunLoop::main().setDrawing([this](bool isAll) { draw(isAll); });
  if (springBoard.options().showsKeys.value_or(false)) showKeysForAWhile();
}

void WindowDisplay::Impl::createWindow() {
  // X11, because the run loop can wait for its connection.
  SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11");
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  // The window's class, by which desktops find the program's entry in their menu.
  SDL_setenv("SDL_VIDEO_X11_WMCLASS", "lumora", 0);
  if (SDL_Init(SDL_INIT_VIDEO) != 0) fail();
  ignoreX11Errors();
  shownSize = springBoard.screen().size();
  const double wanted = scaleOfDesktop();
  const WindowSize size = windowSize(
      shownSize, forcedScale().value_or(fittingScale(shownSize, roomOnMonitor(wanted), wanted)));
  constexpr auto center = static_cast<int>(SDL_WINDOWPOS_CENTERED);
  title = "Lumora";
  // Created hidden and mapped later, because SDL would wait for the window to appear: forever, if a
  // window manager that is just starting drops the event.
  window = SDL_CreateWindow(title.c_str(), center, center, size.width, size.height,
                            SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE);
  if (window == nullptr) fail();
}

void WindowDisplay::Impl::giveIcon() {
  constexpr int side = 128;
  constexpr int bitsPerPixel = 32;
  const DrawnSurface drawing(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side));
  const DrawingContext context(cairo_create(drawing.get()));
  artwork::drawAppIcon(context.get(), side);
  cairo_surface_flush(drawing.get());
  const std::unique_ptr<SDL_Surface, FreeSurface> icon(SDL_CreateRGBSurfaceWithFormatFrom(
      cairo_image_surface_get_data(drawing.get()), side, side, bitsPerPixel,
      cairo_image_surface_get_stride(drawing.get()), SDL_PIXELFORMAT_ARGB8888));
  if (icon) SDL_SetWindowIcon(window, icon.get());
}

void WindowDisplay::Impl::showKeysForAWhile() {
  constexpr std::chrono::seconds enoughToRead{20};
  springBoard.screen().showKeyHelp(true);
  RunLoop::main().setAlarm(this, RunLoop::Clock::now() + enoughToRead,
                           [this] { springBoard.screen().showKeyHelp(false); });
}

SDL_SysWMinfo WindowDisplay::Impl::systemInfo() const {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  if (SDL_GetWindowWMInfo(window, &info) != SDL_TRUE) fail();
  return info;
}

bool WindowDisplay::Impl::handleEvents() {
  SDL_Event event;
  bool handled = false;
  while (SDL_PollEvent(&event) != 0) {
    handled = true;
    handleEvent(event);
  }
  return handled;
}

void WindowDisplay::Impl::handleEvent(const SDL_Event& event) {
  switch (event.type) {
    case SDL_QUIT:
      return RunLoop::main().stop();
    case SDL_KEYDOWN:
      isRepeating = event.key.repeat != 0;
      if (!isRepeating) handleKey(event.key.keysym, springBoard);
      return;
    case SDL_TEXTINPUT:
      if (!isRepeating) handleText(event.text.text, springBoard);
      return;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    case SDL_MOUSEMOTION:
      return handlePointer(event);
    case SDL_WINDOWEVENT:
      return handleWindowEvent(event.window.event);
    default:
      return;
  }
}

void WindowDisplay::Impl::handleWindowEvent(Uint8 event) {
  if (event == SDL_WINDOWEVENT_SHOWN) wasShown = true;
  if (event == SDL_WINDOWEVENT_EXPOSED) mustShowAll = true;
  if (event == SDL_WINDOWEVENT_SIZE_CHANGED) mustLayOut = true;
  lookIfSeen();
  RunLoop::main().setNeedsPartialDisplay();
}

// SDL makes mouse events of what happens on a touch screen.
void WindowDisplay::Impl::handlePointer(const SDL_Event& event) {
  const std::chrono::milliseconds now(event.common.timestamp);
  if (event.type == SDL_MOUSEMOTION) return gestures.move(pointAt(event.motion.x, event.motion.y));
  if (event.button.button != SDL_BUTTON_LEFT) return;
  const artwork::Point at = pointAt(event.button.x, event.button.y);
  if (event.type == SDL_MOUSEBUTTONDOWN) return gestures.press(at, now);
  if (const auto gesture = gestures.release(at, now)) perform(*gesture, springBoard);
}

artwork::Point WindowDisplay::Impl::pointAt(int x, int y) const {
  return {(x - place.screen.x) / place.scale, (y - place.screen.y) / place.scale};
}

void WindowDisplay::Impl::lookIfSeen() {
  const bool isCovered = isUnseen();
  if (isCovered != springBoard.isCovered()) springBoard.setCovered(isCovered);
}

bool WindowDisplay::Impl::isUnseen() const {
  constexpr Uint32 unseen = SDL_WINDOW_HIDDEN | SDL_WINDOW_MINIMIZED;
  // It is hidden until the X server has mapped it.
  if (!wasShown || !cover) return false;
  if ((SDL_GetWindowFlags(window) & unseen) != 0) return true;

  const auto& x11 = systemInfo().info.x11;
  cairo_rectangle_int_t part{};
  Window child = 0;
  XTranslateCoordinates(x11.display, x11.window, DefaultRootWindow(x11.display), 0, 0, &part.x,
                        &part.y, &child);
  SDL_GetWindowSize(window, &part.width, &part.height);
  return cover->isCovered(part);
}

void WindowDisplay::Impl::followTurn() {
  const platform::CGSize size = springBoard.screen().size();
  if (std::exchange(shownOrientation, springBoard.orientation()) != springBoard.orientation()) {
    mustLayOut = true;
  }
  if (std::exchange(shownSize, size) == size) return;
  if ((SDL_GetWindowFlags(window) & (SDL_WINDOW_MAXIMIZED | SDL_WINDOW_FULLSCREEN)) != 0) return;
  const double scale =
      forcedScale().value_or(fittingScale(size, roomOnMonitor(place.scale), place.scale));
  resizeAround(windowSize(size, scale));
}

// Keeps the window's middle where it is, as far as the monitor allows.
void WindowDisplay::Impl::resizeAround(const WindowSize& size) {
  SDL_Rect usable{};
  SDL_Rect old{};
  SDL_GetWindowPosition(window, &old.x, &old.y);
  SDL_GetWindowSize(window, &old.w, &old.h);
  const bool isKnown = SDL_GetDisplayUsableBounds(SDL_GetWindowDisplayIndex(window), &usable) == 0;
  SDL_SetWindowSize(window, size.width, size.height);
  if (!isKnown) return;
  const auto start = [](int middle, int length, int first, int room) {
    return std::clamp(middle - length / 2, first, std::max(first, first + room - length));
  };
  SDL_SetWindowPosition(window, start(old.x + old.w / 2, size.width, usable.x, usable.w),
                        start(old.y + old.h / 2, size.height, usable.y, usable.h));
}

void WindowDisplay::Impl::updateTitle() {
  const std::string& name = springBoard.wallpaperName();
  const std::string now = name.empty() ? "Lumora" : name + " - Lumora";
  if (std::exchange(title, now) != now) SDL_SetWindowTitle(window, now.c_str());
}

SDL_Surface* WindowDisplay::Impl::canvas(SDL_Surface& shown) {
  constexpr auto drawnFormat = SDL_PIXELFORMAT_RGB888;
  if (shown.format->format == drawnFormat) return &shown;
  if (!converted || converted->w != shown.w || converted->h != shown.h) {
    converted.reset(SDL_CreateRGBSurfaceWithFormat(0, shown.w, shown.h, 32, drawnFormat));
    mustLayOut = true;
  }
  return converted.get();
}

void WindowDisplay::Impl::draw(bool isAll) {
  mustPaintAll = isAll || mustPaintAll;
  // The window keeps what was drawn last until it can be seen again.
  if (springBoard.isCovered()) {
    mustPaintAll = true;
    transition.jumpTo({springBoard.state(), springBoard.orientation()});
    return;
  }
  updateTitle();
  followScene();
  followTurn();
  SDL_Surface* shown = SDL_GetWindowSurface(window);
  SDL_Surface* pixels = shown == nullptr ? nullptr : canvas(*shown);
  if (pixels == nullptr) return;
  // A new surface of the window is empty.
  if (std::exchange(drawnPixels, shown->pixels) != shown->pixels) mustLayOut = true;
  if (std::exchange(mustLayOut, false)) layOut(*pixels);
  // What is composed with a transition must be painted again.
  const bool isAllPainted = std::exchange(mustPaintAll, transition.isRunning());
  Region part = painter.takeChangedPart(isAllPainted || transition.isRunning());
  if (!part.isEmpty()) drawScreen(*pixels, part);
  part.move(place.screen.x, place.screen.y);
  if (std::exchange(mustShowAll, false)) part.add({0, 0, pixels->w, pixels->h});
  show(*pixels, *shown, part);
}

void WindowDisplay::Impl::followScene() {
  const Scene scene{springBoard.state(), springBoard.orientation()};
  SDL_Surface* shown = SDL_GetWindowSurface(window);
  const bool isKnown = shown != nullptr && shown->pixels == drawnPixels;
  SDL_Surface* pixels = isKnown ? canvas(*shown) : nullptr;
  const DrawnSurface surface = pixels == nullptr ? nullptr : surfaceOn(*pixels, place.screen);
  transition.show(scene, surface.get());
}

void WindowDisplay::Impl::layOut(const SDL_Surface& pixels) {
  place = placeDevice(shownSize, pixels.w, pixels.h, forcedScale());
  painter.setScale(place.scale);
  mustPaintAll = true;
  mustShowAll = true;
  drawBody(pixels);
}

void WindowDisplay::Impl::drawBody(const SDL_Surface& pixels) {
  const DrawnSurface surface = surfaceOn(pixels, {0, 0, pixels.w, pixels.h});
  const DrawingContext context(cairo_create(surface.get()));
  artwork::setSource(context.get(), surroundings);
  cairo_paint(context.get());
  cairo_translate(context.get(), place.screen.x, place.screen.y);
  cairo_scale(context.get(), place.scale, place.scale);
  artwork::drawDeviceFrame(context.get(), {shownSize.width, shownSize.height}, deviceFrame,
                           topOf(shownOrientation));
}

void WindowDisplay::Impl::drawScreen(const SDL_Surface& pixels, const Region& part) {
  const DrawnSurface surface = surfaceOn(pixels, place.screen);
  painter.paint(surface.get(), part);
  transition.compose(surface.get());
  for (const cairo_rectangle_int_t& corner : screenCorners()) {
    if (!part.overlaps(corner)) continue;
    const DrawingContext context(cairo_create(surface.get()));
    clipTo(context.get(), Region(corner));
    cairo_scale(context.get(), place.scale, place.scale);
    artwork::drawScreenCorners(context.get(), {shownSize.width, shownSize.height});
  }
}

std::array<cairo_rectangle_int_t, 4> WindowDisplay::Impl::screenCorners() const {
  const int side = static_cast<int>(std::ceil(artwork::screenCornerSide * place.scale));
  const int right = place.screen.width - side;
  const int bottom = place.screen.height - side;
  return {{{0, 0, side, side},
           {right, 0, side, side},
           {0, bottom, side, side},
           {right, bottom, side, side}}};
}

void WindowDisplay::Impl::show(SDL_Surface& pixels, SDL_Surface& shown, const Region& part) {
  std::vector<SDL_Rect> rectangles;
  for (const auto& one : part.rectangles()) {
    SDL_Rect& rectangle = rectangles.emplace_back(SDL_Rect{one.x, one.y, one.width, one.height});
    if (&pixels != &shown) SDL_BlitSurface(&pixels, &rectangle, &shown, &rectangle);
  }
  if (rectangles.empty()) return;
  SDL_UpdateWindowSurfaceRects(window, rectangles.data(), static_cast<int>(rectangles.size()));
}

}  // namespace host
