#include "host/displays/x11_desktop.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xrandr.h>
#include <X11/extensions/shape.h>
#include <cairo-xlib.h>

#include "host/desktop/desktop_area.h"
#include "host/desktop/output_painter.h"
#include "host/displays/desktop_cover.h"
#include "host/displays/root_pixmap.h"
#include "host/displays/x11_connection.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/region.h"

namespace host {
namespace {

using platform::backend::Region;
using platform::backend::RunLoop;

// An output with what is painted on it.
struct PaintedOutput {
  Output output;
  OutputPainter painter;
  // In memory that the X server reads, too, if it runs on this machine.
  DrawnSurface canvas;
  // True until the canvas has been painted.
  bool isNew = true;
  // True if it may look different now but was unseen when that changed.
  bool isStale = false;

  cairo_rectangle_int_t rectangle() const {
    return {output.x, output.y, output.width, output.height};
  }
};

}  // namespace

struct X11Desktop::Impl {
  Impl(const DesktopOptions& options, std::function<void()> changed);
  ~Impl();
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  void openWindow();
  void describeWindow();
  std::vector<Output> readOutputs();
  void update();
  void showOnlyChosen();
  void noteCover();
  bool handleEvents();
  void show(const WallpaperPicture& picture);
  // The pixmap is for all outputs, so a wallpaper of one does not replace that of the others.
  bool isPublished() const { return options_.outputs.empty(); }
  Region paint(PaintedOutput& painted, const std::vector<Output>& shown,
               const WallpaperPicture& picture);
  static void copy(const PaintedOutput& painted, Region part, cairo_surface_t* target);

  const DesktopOptions& options_;
  const std::function<void()> changed_;
  Display* const display_;
  const Window root_;
  int randrEvents_ = 0;
  bool hasMonitors_ = false;
  Window window_ = 0;
  DrawnSurface windowSurface_;
  std::optional<RootPixmap> rootPixmap_;
  std::optional<DesktopCover> cover_;
  std::vector<PaintedOutput> outputs_;
};

X11Desktop::X11Desktop(const DesktopOptions& options, std::function<void()> changed)
    : impl_(std::make_unique<Impl>(options, std::move(changed))) {}

X11Desktop::~X11Desktop() = default;

std::vector<Output> X11Desktop::outputs() const {
  std::vector<Output> outputs;
  for (const auto& painted : impl_->outputs_) {
    outputs.push_back(painted.output);
    outputs.back().isPainted = !painted.isNew;
  }
  return outputs;
}

void X11Desktop::show(const WallpaperPicture& picture) {
  impl_->show(picture);
}

void X11Desktop::noteChoice() {
  impl_->update();
  XFlush(impl_->display_);
}

bool X11Desktop::isFading() const {
  return std::ranges::any_of(impl_->outputs_, [](const PaintedOutput& painted) {
    return painted.painter.isFading() && !painted.output.isUnseen;
  });
}

X11Desktop::Impl::Impl(const DesktopOptions& options, std::function<void()> changed)
    : options_(options),
      changed_(std::move(changed)),
      display_(openX11Display()),
      root_(DefaultRootWindow(display_)) {
  ignoreX11Errors();
  int errors = 0;
  int major = 1;
  int minor = 5;
  hasMonitors_ = XRRQueryExtension(display_, &randrEvents_, &errors) != 0 &&
                 XRRQueryVersion(display_, &major, &minor) != 0 && (major > 1 || minor >= 5);
  if (hasMonitors_) XRRSelectInput(display_, root_, RRScreenChangeNotifyMask);
  XSelectInput(display_, root_, StructureNotifyMask | SubstructureNotifyMask);
  openWindow();
  rootPixmap_.emplace(display_);
  cover_.emplace(window_, [this] { noteCover(); });
  update();
  RunLoop::main().addSource(ConnectionNumber(display_), [this] { return handleEvents(); });
}

X11Desktop::Impl::~Impl() {
  RunLoop::main().removeSource(ConnectionNumber(display_));
  // Xlib frees no event that arrives while the connection is closed, and Cairo no memory that the
  // server may still read.
  XSelectInput(display_, root_, NoEventMask);
  if (hasMonitors_) XRRSelectInput(display_, root_, 0);
  XSync(display_, False);
  outputs_.clear();
  windowSurface_.reset();
  rootPixmap_.reset();
  cover_.reset();
  XDestroyWindow(display_, window_);
  XCloseDisplay(display_);
}

void X11Desktop::Impl::openWindow() {
  const int screen = DefaultScreen(display_);
  XSetWindowAttributes attributes{};
  // The server leaves the contents alone until they are painted.
  attributes.background_pixmap = None;
  attributes.bit_gravity = NorthWestGravity;
  attributes.event_mask = ExposureMask;
  window_ = XCreateWindow(
      display_, root_, 0, 0, static_cast<unsigned>(DisplayWidth(display_, screen)),
      static_cast<unsigned>(DisplayHeight(display_, screen)), 0, CopyFromParent, InputOutput,
      CopyFromParent, CWBackPixmap | CWBitGravity | CWEventMask, &attributes);
  describeWindow();
  // Clicks reach what is behind: the menu of the window manager and the desktop's icons.
  XShapeCombineRectangles(display_, window_, ShapeInput, 0, 0, nullptr, 0, ShapeSet, Unsorted);
  windowSurface_.reset(cairo_xlib_surface_create(display_, window_, DefaultVisual(display_, screen),
                                                 DisplayWidth(display_, screen),
                                                 DisplayHeight(display_, screen)));
  XMapWindow(display_, window_);
  XLowerWindow(display_, window_);
}

// Tells the window manager what the window is.
void X11Desktop::Impl::describeWindow() {
  const auto set = [this](const char* property, std::vector<Atom> values) {
    XChangeProperty(display_, window_, XInternAtom(display_, property, False), XA_ATOM, 32,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(values.data()),
                    static_cast<int>(values.size()));
  };
  const auto atom = [this](const char* name) { return XInternAtom(display_, name, False); };
  set("_NET_WM_WINDOW_TYPE", {atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
  set("_NET_WM_STATE", {atom("_NET_WM_STATE_BELOW"), atom("_NET_WM_STATE_STICKY"),
                        atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")});
  XStoreName(display_, window_, "Lumora");
  std::string name = "lumora";
  XClassHint hint{name.data(), name.data()};
  XSetClassHint(display_, window_, &hint);
  XWMHints hints{};
  hints.flags = InputHint;
  hints.input = False;
  XSetWMHints(display_, window_, &hints);
  XSizeHints size{};
  size.flags = USPosition | USSize;
  XSetWMNormalHints(display_, window_, &size);
}

// Without monitors, the screen is the only output.
std::vector<Output> X11Desktop::Impl::readOutputs() {
  std::vector<Output> outputs;
  int count = 0;
  XRRMonitorInfo* monitors = hasMonitors_ ? XRRGetMonitors(display_, root_, True, &count) : nullptr;
  for (int at = 0; at < count; ++at) {
    const XRRMonitorInfo& monitor = monitors[at];
    char* name = XGetAtomName(display_, monitor.name);
    outputs.push_back({.name = name == nullptr ? "" : name,
                       .x = monitor.x,
                       .y = monitor.y,
                       .width = monitor.width,
                       .height = monitor.height});
    if (name != nullptr) XFree(name);
  }
  if (monitors != nullptr) XRRFreeMonitors(monitors);
  XWindowAttributes root{};
  if (outputs.empty() && XGetWindowAttributes(display_, root_, &root) != 0) {
    outputs.push_back({.name = "screen", .width = root.width, .height = root.height});
  }
  return outputs;
}

// Follows the outputs and the size of the screen. An output that stays as it was keeps its canvas.
void X11Desktop::Impl::update() {
  XWindowAttributes root{};
  if (XGetWindowAttributes(display_, root_, &root) == 0) return;
  XMoveResizeWindow(display_, window_, 0, 0, static_cast<unsigned>(root.width),
                    static_cast<unsigned>(root.height));
  cairo_xlib_surface_set_size(windowSurface_.get(), root.width, root.height);
  rootPixmap_->resize(root.width, root.height);
  std::vector<PaintedOutput> updated;
  for (Output& output : readOutputs()) {
    output.isUnseen = cover_->isCovered({output.x, output.y, output.width, output.height});
    const auto same = std::ranges::find_if(outputs_, [&output](const PaintedOutput& old) {
      Output before = old.output;
      before.isUnseen = output.isUnseen;
      return before == output && old.canvas;
    });
    if (same != outputs_.end()) {
      updated.push_back(std::move(*same));
      updated.back().output = output;
      // A larger window may show less than before until it is painted again.
      updated.back().isStale = true;
      continue;
    }
    updated.push_back(
        {.output = output,
         .painter = OutputPainter(options_),
         .canvas = DrawnSurface(cairo_surface_create_similar_image(
             windowSurface_.get(), CAIRO_FORMAT_RGB24, output.width, output.height))});
  }
  outputs_ = std::move(updated);
  showOnlyChosen();
  changed_();
  RunLoop::main().setNeedsPartialDisplay();
}

// Where the window has no shape, the desktop is as without it.
void X11Desktop::Impl::showOnlyChosen() {
  std::vector<XRectangle> shape;
  for (const auto& [output, painter, canvas, isNew, isStale] : outputs_) {
    if (!options_.isChosen(output.name)) continue;
    shape.push_back({static_cast<short>(output.x), static_cast<short>(output.y),
                     static_cast<unsigned short>(output.width),
                     static_cast<unsigned short>(output.height)});
  }
  XShapeCombineRectangles(display_, window_, ShapeBounding, 0, 0, shape.data(),
                          static_cast<int>(shape.size()), ShapeSet, Unsorted);
}

void X11Desktop::Impl::noteCover() {
  for (PaintedOutput& painted : outputs_) {
    painted.output.isUnseen = cover_->isCovered(painted.rectangle());
    if (!painted.output.isUnseen && painted.isStale) RunLoop::main().setNeedsPartialDisplay();
  }
  changed_();
}

bool X11Desktop::Impl::handleEvents() {
  bool handled = false;
  bool mustUpdate = false;
  bool mustLower = false;
  while (XPending(display_) > 0) {
    XEvent event;
    XNextEvent(display_, &event);
    XRRUpdateConfiguration(&event);
    const bool isOfRoot = event.type == ConfigureNotify && event.xconfigure.window == root_;
    const bool isRandr = hasMonitors_ && event.type == randrEvents_ + RRScreenChangeNotify;
    // The other events of extensions are those with which Cairo waits for its own requests.
    handled = handled || isRandr || event.type < LASTEvent;
    mustUpdate = mustUpdate || isOfRoot || isRandr;
    // A program that draws the desktop's icons may have opened its window below ours.
    mustLower = mustLower || (event.type == MapNotify && event.xmap.window != window_);
    if (event.type == Expose) {
      const cairo_rectangle_int_t part{event.xexpose.x, event.xexpose.y, event.xexpose.width,
                                       event.xexpose.height};
      for (const PaintedOutput& painted : outputs_) {
        copy(painted, Region(part), windowSurface_.get());
      }
    }
  }
  if (mustLower) XLowerWindow(display_, window_);
  if (mustUpdate) update();
  XFlush(display_);
  return handled;
}

void X11Desktop::Impl::show(const WallpaperPicture& picture) {
  std::vector<Output> shown;
  for (const PaintedOutput& painted : outputs_) {
    if (options_.isChosen(painted.output.name)) shown.push_back(painted.output);
  }
  for (PaintedOutput& painted : outputs_) {
    if (!options_.isChosen(painted.output.name)) continue;
    const Region part = paint(painted, shown, picture);
    if (part.isEmpty()) continue;
    copy(painted, part, windowSurface_.get());
    if (isPublished()) rootPixmap_->noteChange(part);
  }
  if (isPublished()) {
    rootPixmap_->publish([this](cairo_surface_t* target, const Region& part) {
      for (const PaintedOutput& painted : outputs_) copy(painted, part, target);
    });
  }
  XFlush(display_);
}

// Returns the part of the screen that has been painted.
Region X11Desktop::Impl::paint(PaintedOutput& painted, const std::vector<Output>& shown,
                               const WallpaperPicture& picture) {
  const cairo_rectangle_int_t all{0, 0, painted.output.width, painted.output.height};
  const platform::CGRect area = areaOf(painted.output, shown, options_);
  Region part = painted.painter.affectedPart(picture, area, all);
  if (painted.output.isUnseen && !painted.isNew) {
    painted.isStale = painted.isStale || !part.isEmpty();
    return {};
  }
  if (painted.isStale || painted.isNew) part = Region(all);
  if (part.isEmpty()) return part;
  painted.painter.paint(picture, area, painted.canvas.get(), part);
  painted.isStale = painted.isNew = false;
  part.move(painted.output.x, painted.output.y);
  return part;
}

// Copies a part of the screen from the output's canvas, as far as it is on the output.
void X11Desktop::Impl::copy(const PaintedOutput& painted, Region part, cairo_surface_t* target) {
  if (painted.isNew) return;
  part.intersect(painted.rectangle());
  cairo_t* context = cairo_create(target);
  clipTo(context, part);
  cairo_set_source_surface(context, painted.canvas.get(), painted.output.x, painted.output.y);
  cairo_paint(context);
  cairo_destroy(context);
  cairo_surface_flush(target);
}

}  // namespace host
