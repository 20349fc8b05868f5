#include "host/displays/desktop_cover.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/scrnsaver.h>
#include <cairo.h>

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
  bool isFullyCovered();
  bool isSaverOn();
  // Returns the top-level windows above our own, from the lowest up.
  std::vector<Window> windowsAbove();
  Window topLevel();
  void subtract(cairo_region_t* seen, Window window);
  void subtractOpaqueRegion(cairo_region_t* seen, Window window, int x, int y);
  // Returns the 32-bit numbers of a window's property, or none if it has no such property.
  std::vector<unsigned long> numbers(Window window, const char* property);

  const Window window_;
  const std::function<void()> changed_;
  Display* const display_;
  int saverEvents_ = 0;
  bool hasSaver_ = false;
  bool isCovered_ = false;
};

DesktopCover::DesktopCover(unsigned long window, std::function<void()> changed)
    : impl_(std::make_unique<Impl>(window, std::move(changed))) {}

DesktopCover::~DesktopCover() = default;

bool DesktopCover::isCovered() const {
  return impl_->isCovered_;
}

DesktopCover::Impl::Impl(Window window, std::function<void()> changed)
    : window_(window), changed_(std::move(changed)), display_(XOpenDisplay(nullptr)) {
  if (display_ == nullptr) throw std::runtime_error("cannot watch the desktop: no X11 screen");
  const Window root = DefaultRootWindow(display_);
  XSelectInput(display_, root, SubstructureNotifyMask);
  int errors = 0;
  hasSaver_ = XScreenSaverQueryExtension(display_, &saverEvents_, &errors) != 0;
  if (hasSaver_) XScreenSaverSelectInput(display_, root, ScreenSaverNotifyMask);
  RunLoop::main().addSource(ConnectionNumber(display_), [this] { return handleEvents(); });
  isCovered_ = isSaverOn() || isFullyCovered();
}

DesktopCover::Impl::~Impl() {
  RunLoop::main().removeSource(ConnectionNumber(display_));
  XCloseDisplay(display_);
}

bool DesktopCover::Impl::handleEvents() {
  bool handled = false;
  while (XPending(display_) > 0) {
    XEvent event;
    XNextEvent(display_, &event);
    handled = true;
  }
  // After the loop, because requests to the server may add events to the queue.
  if (handled) look();
  return handled;
}

void DesktopCover::Impl::look() {
  const bool isCovered = isSaverOn() || isFullyCovered();
  if (std::exchange(isCovered_, isCovered) != isCovered) changed_();
}

bool DesktopCover::Impl::isSaverOn() {
  if (!hasSaver_) return false;
  const XPointer<XScreenSaverInfo> info(XScreenSaverAllocInfo());
  return info && XScreenSaverQueryInfo(display_, DefaultRootWindow(display_), info.get()) != 0 &&
         info->state == ScreenSaverOn;
}

bool DesktopCover::Impl::isFullyCovered() {
  XWindowAttributes ours{};
  if (XGetWindowAttributes(display_, DefaultRootWindow(display_), &ours) == 0) return false;
  const cairo_rectangle_int_t screen{0, 0, ours.width, ours.height};
  const Region seen(cairo_region_create_rectangle(&screen));
  for (const Window window : windowsAbove()) subtract(seen.get(), window);
  return cairo_region_is_empty(seen.get()) != 0;
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

std::vector<Window> DesktopCover::Impl::windowsAbove() {
  Window root = 0;
  Window parent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display_, DefaultRootWindow(display_), &root, &parent, &children, &count) == 0) {
    return {};
  }
  const XPointer<Window> owner(children);
  const Window own = topLevel();
  std::vector<Window> above;
  bool isAbove = false;
  for (unsigned index = 0; index < count; ++index) {
    if (isAbove) above.push_back(children[index]);
    isAbove = isAbove || children[index] == own;
  }
  return above;
}

void DesktopCover::Impl::subtract(cairo_region_t* seen, Window window) {
  XWindowAttributes attributes{};
  if (XGetWindowAttributes(display_, window, &attributes) == 0) return;
  if (attributes.map_state != IsViewable || attributes.c_class != InputOutput) return;
  const auto opacity = numbers(window, "_NET_WM_WINDOW_OPACITY");
  if (!opacity.empty() && opacity.front() < fullOpacity) return;
  if (attributes.depth == depthWithTransparency) {
    return subtractOpaqueRegion(seen, window, attributes.x, attributes.y);
  }
  const int border = 2 * attributes.border_width;
  const cairo_rectangle_int_t frame{attributes.x, attributes.y, attributes.width + border,
                                    attributes.height + border};
  cairo_region_subtract_rectangle(seen, &frame);
}

// A window with transparency hides only the region that it declares opaque.
void DesktopCover::Impl::subtractOpaqueRegion(cairo_region_t* seen, Window window, int x, int y) {
  const auto region = numbers(window, "_NET_WM_OPAQUE_REGION");
  for (std::size_t at = 0; at + 4 <= region.size(); at += 4) {
    const cairo_rectangle_int_t part{
        x + static_cast<int>(region[at]), y + static_cast<int>(region[at + 1]),
        static_cast<int>(region[at + 2]), static_cast<int>(region[at + 3])};
    cairo_region_subtract_rectangle(seen, &part);
  }
}

std::vector<unsigned long> DesktopCover::Impl::numbers(Window window, const char* property) {
  constexpr long maxNumbers = 1024;
  constexpr int numberBits = 32;
  Atom type = 0;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* data = nullptr;
  const int result =
      XGetWindowProperty(display_, window, XInternAtom(display_, property, False), 0, maxNumbers,
                         False, XA_CARDINAL, &type, &format, &count, &rest, &data);
  const XPointer<unsigned char> owner(data);
  if (result != Success || type != XA_CARDINAL || format != numberBits) return {};
  const auto* values = reinterpret_cast<const unsigned long*>(data);
  return {values, values + count};
}

}  // namespace host
