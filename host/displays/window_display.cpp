#include "host/displays/window_display.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <SDL2/SDL.h>
#include <SDL2/SDL_syswm.h>
#include <X11/Xlib.h>
#include <fcntl.h>

#include "host/displays/x11_connection.h"
#include "host/home_screen/screen_drawing.h"
#include "host/home_screen/screen_painter.h"
#include "platform/linux/files/file_contents.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::UIInterfaceOrientation;
using platform::backend::Region;
using platform::backend::RunLoop;

[[noreturn]] void fail(const std::string& reason = SDL_GetError()) {
  throw std::runtime_error("cannot open a window (" + reason +
                           "); without a display, use --display headless");
}

void saveScreenshot(SpringBoard& springBoard) {
  std::string name;
  for (int count = 1; name.empty() || std::filesystem::exists(name); ++count) {
    name = "springboard-" + std::to_string(count) + ".png";
  }
  const platform::backend::FileDescriptor png(
      takeScreenshot(springBoard.screen(), springBoard.options().scale));
  const platform::backend::FileDescriptor file =
      platform::backend::createFile(AT_FDCWD, std::filesystem::absolute(name));
  if (png && file && platform::backend::copyFile(png, file)) {
    std::printf("%s\n", name.c_str());
    std::fflush(stdout);
  } else {
    std::fprintf(stderr, "springboard: cannot write %s here\n", name.c_str());
  }
}

void toggleLock(SpringBoard& springBoard) {
  if (springBoard.state() == ScreenState::Locked) {
    springBoard.goHome();
  } else {
    springBoard.lock();
  }
}

void toggleApp(SpringBoard& springBoard) {
  if (springBoard.state() == ScreenState::App) {
    springBoard.closeApp();
  } else {
    springBoard.openApp();
  }
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
  bool handleEvents();
  void handleKey(const SDL_KeyboardEvent& key);
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
    if (event.type == SDL_QUIT) RunLoop::main().stop();
    if (event.type == SDL_KEYDOWN && event.key.repeat == 0) handleKey(event.key);
    if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
      mustShowAll = true;
      RunLoop::main().setNeedsPartialDisplay();
    }
  }
  return handled;
}

void WindowDisplay::Impl::handleKey(const SDL_KeyboardEvent& key) {
  switch (key.keysym.sym) {
    case SDLK_l:
      return toggleLock(springBoard);
    case SDLK_h:
      return springBoard.goHome();
    case SDLK_a:
      return toggleApp(springBoard);
    case SDLK_LEFT:
      return springBoard.rotate(UIInterfaceOrientation::LandscapeRight);
    case SDLK_RIGHT:
      return springBoard.rotate(UIInterfaceOrientation::LandscapeLeft);
    case SDLK_UP:
      return springBoard.rotate(UIInterfaceOrientation::Portrait);
    case SDLK_DOWN:
      return springBoard.rotate(UIInterfaceOrientation::PortraitUpsideDown);
    case SDLK_s:
      return saveScreenshot(springBoard);
    case SDLK_p:
      return springBoard.turnDisplay(springBoard.state() == ScreenState::Off);
    case SDLK_q:
      return RunLoop::main().stop();
    case SDLK_QUESTION:
    case SDLK_SLASH:
      return springBoard.screen().toggleKeyHelp();
    default:
      return;
  }
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
