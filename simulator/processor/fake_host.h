// A host for the library, which records the library's requests and carries them out at once: blocks
// run when they are queued. The device has no screen and a shared wallpaper, whose frames are
// cached.
#pragma once

#include <string>
#include <vector>

#include "mach_o_image.h"

// Returns the address for a name. An unknown function's address ends the process when it is called.
void* resolve(const std::string& name);
// Makes the library's own classes receive messages.
void adoptClasses(const MachOImage& library);

struct Hook {
  // "Class selector", with a plus sign and the types if the method was added.
  std::string place;
  void* code;
};
// Returns the methods that the library has replaced or added, in order.
const std::vector<Hook>& hooks();

// Returns the requests since the last call, in order.
std::vector<std::string> takeEvents();
// Delivers a Darwin notification to its observers.
void post(const std::string& name);
// Makes the next redrawing of the wallpaper raise an exception.
void raiseAtRedraw();
