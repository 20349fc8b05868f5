#include "placement/view_slots.h"

#include "gifview/gif_view.h"

namespace lumora {

constinit ViewGlobal sharedGIFView;
constinit ViewGlobal lockscreenGIFView;
constinit ViewGlobal homescreenGIFView;
constinit ListenerGlobal sharedListener;
constinit ListenerGlobal lockscreenListener;
constinit ListenerGlobal homescreenListener;

constinit const std::array<ViewSlot, locations.size()> viewSlots = {{
    {locations[0], sharedGIFView, sharedListener, "_sharedWallpaperView"},
    {locations[1], lockscreenGIFView, lockscreenListener, "_lockscreenWallpaperView"},
    {locations[2], homescreenGIFView, homescreenListener, "_homescreenWallpaperView"},
}};

const ViewSlot* slotOf(ScreenLocation location) {
  const auto index = static_cast<std::size_t>(location);
  return index < viewSlots.size() ? &viewSlots[index] : nullptr;
}

}  // namespace lumora
