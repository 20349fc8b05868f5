// Cairo objects that destroy themselves.
#pragma once

#include <memory>

#include <cairo.h>

namespace platform::backend {

struct DestroyCairoObject {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, DestroyCairoObject>;
using CairoContext = std::unique_ptr<cairo_t, DestroyCairoObject>;

}  // namespace platform::backend
