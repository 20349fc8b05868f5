#include "host/displays/root_pixmap.h"

#include <utility>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <cairo-xlib.h>

namespace host {

using platform::backend::Region;

namespace {

// Old programs read the second.
constexpr const char* properties[] = {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"};

// Returns the pixmap that a property of the root window names, or 0.
Pixmap pixmapIn(Display* display, Atom property) {
  Atom type = 0;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, DefaultRootWindow(display), property, 0, 1, False, XA_PIXMAP, &type,
                     &format, &count, &rest, &data);
  const Pixmap pixmap = count == 1 ? *reinterpret_cast<const Pixmap*>(data) : 0;
  if (data != nullptr) XFree(data);
  return pixmap;
}

}  // namespace

RootPixmap::~RootPixmap() {
  release();
}

void RootPixmap::release() {
  surface_.reset();
  if (pixmap_ == 0) return;
  for (const char* name : properties) {
    const Atom property = XInternAtom(display_, name, False);
    if (pixmapIn(display_, property) == pixmap_) {
      XDeleteProperty(display_, DefaultRootWindow(display_), property);
    }
  }
  XFreePixmap(display_, std::exchange(pixmap_, 0));
}

void RootPixmap::resize(int width, int height) {
  if (width == width_ && height == height_) return;
  release();
  width_ = width;
  height_ = height;
  changed_ = Region({0, 0, width, height});
}

void RootPixmap::noteChange(const Region& part) {
  changed_.add(part);
}

void RootPixmap::publish(const Paint& paint) {
  constexpr std::chrono::seconds pause{1};
  const auto now = std::chrono::steady_clock::now();
  if (changed_.isEmpty() || (pixmap_ != 0 && now - publishedAt_ < pause)) return;
  const int screen = DefaultScreen(display_);
  if (pixmap_ == 0) {
    pixmap_ = XCreatePixmap(display_, DefaultRootWindow(display_), static_cast<unsigned>(width_),
                            static_cast<unsigned>(height_),
                            static_cast<unsigned>(DefaultDepth(display_, screen)));
    surface_.reset(cairo_xlib_surface_create(display_, pixmap_, DefaultVisual(display_, screen),
                                             width_, height_));
  }
  paint(surface_.get(), std::exchange(changed_, Region()));
  publishedAt_ = now;
  announce();
}

// A change of the property, even to the same value, makes other programs look again.
void RootPixmap::announce() {
  for (const char* name : properties) {
    XChangeProperty(display_, DefaultRootWindow(display_), XInternAtom(display_, name, False),
                    XA_PIXMAP, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&pixmap_), 1);
  }
}

}  // namespace host
