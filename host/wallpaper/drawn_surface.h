// The host's names of Cairo objects that destroy themselves.
#pragma once

#include "platform/linux/views/cairo_objects.h"

namespace host {

using DrawnSurface = platform::backend::CairoSurface;
using DrawingContext = platform::backend::CairoContext;

}  // namespace host
