// The animated view and the listener of each wallpaper location. Views are kept until the process
// ends: a removal only detaches them.
#pragma once

#include <array>
#include <memory>

#include "placement/wallpaper_listener.h"
#include "settings/locations.h"
#include "threads/guarded.h"

namespace lumora {

class LWGIFView;

using ViewGlobal = GuardedGlobal<std::shared_ptr<LWGIFView>>;

// Written on tweakQueue, read on any thread. nullptr if none has been created.
extern ViewGlobal sharedGIFView;
extern ViewGlobal lockscreenGIFView;
extern ViewGlobal homescreenGIFView;
extern ListenerGlobal sharedListener;
extern ListenerGlobal lockscreenListener;
extern ListenerGlobal homescreenListener;

struct ViewSlot {
  const Location& location;
  ViewGlobal& view;
  ListenerGlobal& listener;
  // The instance variable of the host's wallpaper controller that holds the host's view.
  const char* hostViewVariable;
};

// In the order of ScreenLocation.
extern const std::array<ViewSlot, locations.size()> viewSlots;

// Returns the location's slot, or nullptr for an unknown location. Any thread.
const ViewSlot* slotOf(ScreenLocation location);

}  // namespace lumora
