// Where a window shows the device. Lengths of the window are pixels, those of the device points.
#pragma once

#include <optional>

#include <cairo.h>

#include "platform/geometry.h"

namespace host {

// The thickness of the device's frame around its screen.
inline constexpr double deviceFrame = 16;

struct DevicePlace {
  // Pixels per point.
  double scale;
  // The pixels of the device's screen in the window.
  cairo_rectangle_int_t screen;
};

// Returns the place of the device in the middle of a window: as large as the window allows, but not
// larger than maxScale says. screen: its size in points.
DevicePlace placeDevice(platform::CGSize screen, int width, int height,
                        std::optional<double> maxScale);

struct WindowSize {
  int width;
  int height;
};

// Returns the size of a window that shows the device with this scale.
WindowSize windowSize(platform::CGSize screen, double scale);

// Returns the wanted scale, or a smaller one with which the window fits into this room.
double fittingScale(platform::CGSize screen, WindowSize room, double wanted);

}  // namespace host
