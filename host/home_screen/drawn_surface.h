// Cairo objects that destroy themselves.
#pragma once

#include <memory>

#include <cairo.h>

namespace host {

struct DestroySurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using DrawnSurface = std::unique_ptr<cairo_surface_t, DestroySurface>;

struct DestroyContext {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using DrawingContext = std::unique_ptr<cairo_t, DestroyContext>;

}  // namespace host
