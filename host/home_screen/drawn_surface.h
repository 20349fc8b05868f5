// A Cairo surface that destroys itself.
#pragma once

#include <memory>

#include <cairo.h>

namespace host {

struct DestroySurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using DrawnSurface = std::unique_ptr<cairo_surface_t, DestroySurface>;

}  // namespace host
