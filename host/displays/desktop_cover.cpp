#include "host/displays/desktop_cover.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/scrnsaver.h>
#include <X11/extensions/shape.h>
#include <cairo.h>

#include "host/displays/x11_connection.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::RunLoop;

constexpr unsigned long fullOpacity = 0xFFFFFFFF;
constexpr int depthWithTransparency = 32;

template <typename Data>
struct FreeWithX {
  void operator()(Data* data) const { XFree(data); }
};
template <typename Data>
using XPointer = std::unique_ptr<Data, FreeWithX<Data>>;

struct FreeRegion {
  void operator()(cairo_region_t* region) const { cairo_region_destroy(region); }
};
using Region = std::unique_ptr<cairo_region_t, FreeRegion>;

}  // namespace

struct DesktopCover::Impl {
  Impl(Window window, std::function<void()> changed);
  ~Impl();
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  bool handleEvents();
  void look();
  // Returns the part of the screen that can be seen.
  Region seenPart();
  bool isSaverOn();
  // Returns the top-level windows above our own, from the lowest up.
  std::vector<Window> windowsAbove();
  std::vector<Window> topLevelWindows();
  Window topLevel();
  void subtract(cairo_region_t* seen, Window window);
  void subtractShape(cairo_region_t* seen, Window window, int x, int y);
  void subtractOpaqueRegion(cairo_region_t* seen, Window window, int x, int y);
  // Returns the 32-bit numbers of a window's property, or none if it has no such property.
  std::vector<unsigned long> numbers(Window window, Atom property);

  const Window window_;
  const std::function<void()> changed_;
  Display* const display_;
  int saverEvents_ = 0;
  bool hasSaver_ = false;
  const Atom opacity_;
  const Atom opaqueRegion_;
  Region seen_;
};

DesktopCover::DesktopCover(unsigned long window, std::function<void()> changed)
    : impl_(std::make_unique<Impl>(window, std::move(changed))) {}

DesktopCover::~DesktopCover() = default;

bool DesktopCover::isCovered(const cairo_rectangle_int_t& part) const {
  return cairo_region_contains_rectangle(impl_->seen_.get(), &part) == CAIRO_REGION_OVERLAP_OUT;
}

DesktopCover::Impl::Impl(Window window, std::function<void()> changed)
    : window_(window),
      changed_(std::move(changed)),
      display_(openX11Display()),
      opacity_(XInternAtom(display_, "_NET_WM_WINDOW_OPACITY", False)),
      opaqueRegion_(XInternAtom(display_, "_NET_WM_OPAQUE_REGION", False)) {
  const Window root = DefaultRootWindow(display_);
  XSelectInput(display_, root, SubstructureNotifyMask | StructureNotifyMask);
  int errors = 0;
  hasSaver_ = XScreenSaverQueryExtension(display_, &saverEvents_, &errors) != 0;
  if (hasSaver_) XScreenSaverSelectInput(display_, root, ScreenSaverNotifyMask);
  RunLoop::main().addSource(ConnectionNumber(display_), [this] { return handleEvents(); });
  seen_ = seenPart();
}

DesktopCover::Impl::~Impl() {
  RunLoop::main().removeSource(ConnectionNumber(display_));
  XCloseDisplay(display_);
}

bool DesktopCover::Impl::handleEvents() {
  bool handled = false;
  bool mustLook = false;
  while (XPending(display_) > 0) {
    XEvent event;
    XNextEvent(display_, &event);
    handled = true;
    const bool isOtherProperty = event.type == PropertyNotify && event.xproperty.atom != opacity_ &&
                                 event.xproperty.atom != opaqueRegion_;
    mustLook = mustLook || !isOtherProperty;
  }
  // After the loop, because requests to the server may add events to the queue.
  if (mustLook) look();
  return handled;
}

void DesktopCover::Impl::look() {
  const Region before = std::exchange(seen_, seenPart());
  if (cairo_region_equal(before.get(), seen_.get()) == 0) changed_();
}

bool DesktopCover::Impl::isSaverOn() {
  if (!hasSaver_) return false;
  const XPointer<XScreenSaverInfo> info(XScreenSaverAllocInfo());
  return info && XScreenSaverQueryInfo(display_, DefaultRootWindow(display_), info.get()) != 0 &&
         info->state == ScreenSaverOn;
}

Region DesktopCover::Impl::seenPart() {
  XWindowAttributes root{};
  if (isSaverOn() || XGetWindowAttributes(display_, DefaultRootWindow(display_), &root) == 0) {
    return Region(cairo_region_create());
  }
  const cairo_rectangle_int_t screen{0, 0, root.width, root.height};
  Region seen(cairo_region_create_rectangle(&screen));
  for (const Window window : windowsAbove()) subtract(seen.get(), window);
  return seen;
}

// Returns our window, or the frame into which a window manager has put it.
Window DesktopCover::Impl::topLevel() {
  for (Window window = window_;;) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display_, window, &root, &parent, &children, &count) == 0) return window;
    const XPointer<Window> owner(children);
    if (parent == root || parent == 0) return window;
    window = parent;
  }
}

std::vector<Window> DesktopCover::Impl::topLevelWindows() {
  Window root = 0;
  Window parent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display_, DefaultRootWindow(display_), &root, &parent, &children, &count) == 0) {
    return {};
  }
  const XPointer<Window> owner(children);
  return {children, children + count};
}

std::vector<Window> DesktopCover::Impl::windowsAbove() {
  const Window own = topLevel();
  std::vector<Window> windows = topLevelWindows();
  // If a window manager has just put our window into a frame, its event makes us look again.
  const auto at = std::ranges::find(windows, own);
  if (at == windows.end()) return {};
  windows.erase(windows.begin(), at + 1);
  return windows;
}

void DesktopCover::Impl::subtract(cairo_region_t* seen, Window window) {
  XWindowAttributes attributes{};
  if (XGetWindowAttributes(display_, window, &attributes) == 0) return;
  if (attributes.map_state != IsViewable || attributes.c_class != InputOutput) return;
  XSelectInput(display_, window, PropertyChangeMask);
  const auto opacity = numbers(window, opacity_);
  if (!opacity.empty() && opacity.front() < fullOpacity) return;
  if (attributes.depth == depthWithTransparency) {
    return subtractOpaqueRegion(seen, window, attributes.x, attributes.y);
  }
  subtractShape(seen, window, attributes.x + attributes.border_width,
                attributes.y + attributes.border_width);
}

// A window without a shape has that of its border. x and y: the corner inside the border.
void DesktopCover::Impl::subtractShape(cairo_region_t* seen, Window window, int x, int y) {
  XShapeSelectInput(display_, window, ShapeNotifyMask);
  int count = 0;
  int order = 0;
  const XPointer<XRectangle> shape(
      XShapeGetRectangles(display_, window, ShapeBounding, &count, &order));
  for (int at = 0; shape && at < count; ++at) {
    const XRectangle& part = shape.get()[at];
    const cairo_rectangle_int_t rectangle{x + part.x, y + part.y, part.width, part.height};
    cairo_region_subtract_rectangle(seen, &rectangle);
  }
}

// A window with transparency hides only the region that it declares opaque.
void DesktopCover::Impl::subtractOpaqueRegion(cairo_region_t* seen, Window window, int x, int y) {
  const auto region = numbers(window, opaqueRegion_);
  for (std::size_t at = 0; at + 4 <= region.size(); at += 4) {
    const cairo_rectangle_int_t part{
        x + static_cast<int>(region[at]), y + static_cast<int>(region[at + 1]),
        static_cast<int>(region[at + 2]), static_cast<int>(region[at + 3])};
    cairo_region_subtract_rectangle(seen, &part);
  }
}

std::vector<unsigned long> DesktopCover::Impl::numbers(Window window, Atom property) {
  constexpr long maxNumbers = 1024;
  constexpr int numberBits = 32;
  Atom type = 0;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* data = nullptr;
  const int result = XGetWindowProperty(display_, window, property, 0, maxNumbers, False,
                                        XA_CARDINAL, &type, &format, &count, &rest, &data);
  const XPointer<unsigned char> owner(data);
  if (result != Success || type != XA_CARDINAL || format != numberBits) return {};
  const auto* values = reinterpret_cast<const unsigned long*>(data);
  return {values, values + count};
}

}  // namespace host
