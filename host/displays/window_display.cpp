#include "host/displays/window_display.h"

#include <chrono>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <SDL2/SDL.h>
#include <SDL2/SDL_syswm.h>
#include <X11/Xlib.h>

#include "host/displays/window_keys.h"
#include "host/displays/x11_connection.h"
#include "host/home_screen/gesture_actions.h"
#include "host/home_screen/gesture_recognizer.h"
#include "host/home_screen/screen_drawing.h"
#include "host/home_screen/screen_painter.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::Region;
using platform::backend::RunLoop;

[[noreturn]] void fail(const std::string& reason = SDL_GetError()) {
  throw std::runtime_error("cannot open a window (" + reason +
                           "); without a display, use --display headless");
}

}  // namespace

struct FreeSurface {
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

struct WindowDisplay::Impl {
  explicit Impl(SpringBoard& board)
      : springBoard(board),
        painter(board.screen(), board.options().scale, board.options().desktop.maxKeptBytes) {}
  ~Impl();
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  void open();
  SDL_SysWMinfo systemInfo() const;
  void showKeysForAWhile();
  bool handleEvents();
  void handleEvent(const SDL_Event& event);
  void handlePointer(const SDL_Event& event);
  // Returns the point of the screen at a pixel of the window.
  artwork::Point pointAt(int x, int y) const;
  void draw(bool isAll);
  // Shows a part of what has been drawn.
  void show(SDL_Surface& pixels, SDL_Surface& shown, const Region& part);
  // Returns the surface to draw on: the window's own or, if that does not have 8 bits per color, a
  // converted one. Returns nullptr if there is no memory for it.
  SDL_Surface* canvas(SDL_Surface& shown);
  // Resizes the window after a rotation. Returns true if the size has changed.
  bool fitToScreen();

  SpringBoard& springBoard;
  ScreenPainter painter;
  GestureRecognizer gestures;
  // True while a key is held down.
  bool isRepeating = false;
  SDL_Window* window = nullptr;
  // In pixels.
  int width = 0;
  int height = 0;
  // True until the whole screen has been painted anew.
  bool mustPaintAll = true;
  // True until the whole screen has been copied to the window.
  bool mustShowAll = true;
  // The window's surface that was painted last.
  const void* drawnPixels = nullptr;
  int drawnWidth = 0;
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
  if (window != nullptr) SDL_DestroyWindow(window);
  SDL_Quit();
}

void WindowDisplay::Impl::open() {
  // X11, because the run loop can wait for its connection.
  SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11");
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  if (SDL_Init(SDL_INIT_VIDEO) != 0) fail();
  ignoreX11Errors();
  width = springBoard.options().width * springBoard.options().scale;
  height = springBoard.options().height * springBoard.options().scale;
  constexpr auto place = static_cast<int>(SDL_WINDOWPOS_CENTERED);
  // Created hidden and mapped below, because SDL would wait for the window to appear: forever, if a
  // window manager that is just starting drops the event.
  window = SDL_CreateWindow("Lumora", place, place, width, height, SDL_WINDOW_HIDDEN);
  if (window == nullptr) fail();
  const auto& x11 = systemInfo().info.x11;
  // SDL draws nothing on such a screen and reports no error.
  constexpr int depthOfDeepColor = 30;
  if (DefaultDepth(x11.display, DefaultScreen(x11.display)) == depthOfDeepColor) {
    fail("screens of 30 bits are not supported, only those of 16 and 24");
  }
  XMapWindow(x11.display, x11.window);
  XFlush(x11.display);
  RunLoop::main().addSource(XConnectionNumber(x11.display), [this] { return handleEvents(); });
  RunLoop::main().setDrawing([this](bool isAll) { draw(isAll); });
  if (springBoard.options().showsKeys.value_or(false)) showKeysForAWhile();
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
      if (event.window.event != SDL_WINDOWEVENT_EXPOSED) return;
      mustShowAll = true;
      return RunLoop::main().setNeedsPartialDisplay();
    default:
      return;
  }
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
  const double scale = springBoard.options().scale;
  return {x / scale, y / scale};
}

bool WindowDisplay::Impl::fitToScreen() {
  const auto pixels = pixelsOf(springBoard.screen(), springBoard.options().scale);
  if (pixels.width == width && pixels.height == height) return false;
  width = pixels.width;
  height = pixels.height;
  SDL_SetWindowSize(window, width, height);
  return true;
}

SDL_Surface* WindowDisplay::Impl::canvas(SDL_Surface& shown) {
  constexpr auto drawnFormat = SDL_PIXELFORMAT_RGB888;
  if (shown.format->format == drawnFormat) return &shown;
  if (!converted || converted->w != shown.w || converted->h != shown.h) {
    converted.reset(SDL_CreateRGBSurfaceWithFormat(0, shown.w, shown.h, 32, drawnFormat));
    mustPaintAll = true;
  }
  return converted.get();
}

void WindowDisplay::Impl::draw(bool isAll) {
  mustPaintAll = fitToScreen() || isAll || mustPaintAll;
  SDL_Surface* shown = SDL_GetWindowSurface(window);
  SDL_Surface* pixels = shown == nullptr ? nullptr : canvas(*shown);
  if (pixels == nullptr) return;
  // A new surface of the window is empty.
  const bool isNew = shown->pixels != drawnPixels || pixels->w != drawnWidth;
  Region part = painter.takeChangedPart(std::exchange(mustPaintAll, false) || isNew);
  if (mustShowAll) part = painter.all();
  part.intersect({0, 0, pixels->w, pixels->h});
  if (part.isEmpty()) return;
  cairo_surface_t* surface =
      cairo_image_surface_create_for_data(static_cast<unsigned char*>(pixels->pixels),
                                          CAIRO_FORMAT_RGB24, pixels->w, pixels->h, pixels->pitch);
  painter.paint(surface, part);
  cairo_surface_destroy(surface);
  show(*pixels, *shown, part);
  mustShowAll = false;
  drawnPixels = shown->pixels;
  drawnWidth = pixels->w;
}

void WindowDisplay::Impl::show(SDL_Surface& pixels, SDL_Surface& shown, const Region& part) {
  std::vector<SDL_Rect> rectangles;
  for (const auto& one : part.rectangles()) {
    SDL_Rect& rectangle = rectangles.emplace_back(SDL_Rect{one.x, one.y, one.width, one.height});
    if (&pixels != &shown) SDL_BlitSurface(&pixels, &rectangle, &shown, &rectangle);
  }
  SDL_UpdateWindowSurfaceRects(window, rectangles.data(), static_cast<int>(rectangles.size()));
}

}  // namespace host
