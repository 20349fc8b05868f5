// What the library has made at each wallpaper location: its animated view and its listener. Both
// are kept for the life of the process: a removal only detaches a view.
#pragma once

#include <memory>

#include "settings/locations.h"
#include "threads/guarded.h"

namespace lumora {

class LWGIFView;
class LWWallpaperListener;

using ViewGlobal = GuardedGlobal<std::shared_ptr<LWGIFView>>;
using ListenerGlobal = GuardedGlobal<std::shared_ptr<LWWallpaperListener>>;

// Written on tweakQueue, read on any thread; nullptr until first made.
extern ViewGlobal sharedGIFView;
extern ViewGlobal lockscreenGIFView;
extern ViewGlobal homescreenGIFView;
extern ListenerGlobal sharedListener;
extern ListenerGlobal lockscreenListener;
extern ListenerGlobal homescreenListener;

struct LocationEntry {
  const Location& location;
  ViewGlobal& view;
  ListenerGlobal& listener;
  // The host wallpaper controller's instance variable.
  const char* hostViewVariable;
};

// In the order of the locations' numbers.
extern const std::array<LocationEntry, 3> locationEntries;

// Returns nullptr for an unknown location.
const LocationEntry* entryOf(ScreenLocation location);

}  // namespace lumora
