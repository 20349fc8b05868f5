// What belongs to each wallpaper location: its animated view, its listener, its host view and its
// file. Views and listeners are kept for the life of the process: a removal only detaches a view.
#pragma once

#include <memory>
#include <string>

#include "gifview/gif_view.h"
#include "placement/wallpaper_listener.h"
#include "settings/screen_location.h"
#include "threads/guarded.h"

namespace lumora {

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
  ScreenLocation location;
  ViewGlobal& view;
  ListenerGlobal& listener;
  // The host wallpaper controller's instance variable.
  const char* hostViewVariable;
  const char* gifPath;

  std::string identifier() const { return identifierOf(location); }
  // The settings key that says whether this location has a wallpaper.
  std::string wallpaperSetKey() const { return identifier() + "_WALLPAPER_SET"; }
};

extern const LocationEntry sharedEntry;
extern const LocationEntry lockscreenEntry;
extern const LocationEntry homescreenEntry;

// nullptr for an unknown location.
const LocationEntry* entryOf(ScreenLocation location);

}  // namespace lumora
