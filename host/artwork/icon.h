// Draws an app's icon, computes its place in a row and finds the one at a point. Units are points;
// the background is transparent.
#pragma once

#include <span>

#include <cairo.h>

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"
#include "host/options/idiom.h"

namespace artwork {

// An app's icon and its place.
struct PlacedIcon {
  const App* app;
  Rect plate;
};

// Returns the side of an icon.
double iconSide(host::Idiom idiom);

// Returns where item index begins if count items of length side are spread over a length with equal
// gaps between and around them. Grid and dock share this rule, so that their columns line up.
double spreadOffset(int index, int count, double side, double length);

// Returns the app whose icon is at the point, or nullptr. A finger may be a little beside it.
const App* appAt(std::span<const PlacedIcon> icons, Point point);

// Draws the app's icon without its name: a symbol on a rounded plate with a soft shadow.
void drawIcon(cairo_t* context, const PlacedIcon& icon);

}  // namespace artwork
