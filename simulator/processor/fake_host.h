// A host for the library that records what it is asked, and does it at once: blocks run where they
// are queued. It has a screenless device with one shared wallpaper, whose GIF is in the cache.
#pragma once

#include <string>
#include <vector>

#include "mach_o_image.h"

// The address that a name stands for; of what is not here, one that ends the process when called.
void* resolve(const std::string& name);
// Has the library's own classes answer messages.
void adoptClasses(const MachOImage& library);

struct Hook {
  // "Class selector", with a plus sign and the types where a method was added.
  std::string place;
  void* code;
};
const std::vector<Hook>& hooks();

// What was asked since the last call, in order.
std::vector<std::string> takeEvents();
// Delivers a Darwin notification to whoever listens for it.
void post(const std::string& name);
// The next redrawing of the wallpaper raises an exception.
void raiseAtRedraw();
