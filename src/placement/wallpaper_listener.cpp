#include "placement/wallpaper_listener.h"

#include <atomic>

#include "placement/view_slots.h"
#include "threads/exception_barrier.h"

namespace lumora {
namespace {

std::atomic<LWWallpaperListener::VisibilityHandler> visibilityHandler = nullptr;

void removeOldListener(const std::shared_ptr<platform::UIView>& object, ListenerGlobal& listener) {
  const auto old = listener.load();
  if (!old) return;
  const bool removed = platform::swallowingNSException([&] {
    if (object) object->removeObserver(*old, LWWallpaperListener::keyPath);
  });
  if (removed) listener.store(nullptr);
}

ScreenLocation locationOfTag(int tag) {
  const Location* location = locationWithTag(tag);
  return location == nullptr ? ScreenLocation::Unknown : location->id;
}

}  // namespace

void LWWallpaperListener::setVisibilityHandler(VisibilityHandler handler) {
  visibilityHandler = handler;
}

void LWWallpaperListener::addListenerToObject(const std::shared_ptr<platform::UIView>& object,
                                              ScreenLocation location) {
  const ViewSlot* slot = slotOf(location);
  if (slot == nullptr) return;
  removeOldListener(object, slot->listener);
  auto listener = std::make_shared<LWWallpaperListener>();
  slot->listener.store(listener);
  // The context only has to be a distinct address for each location.
  if (object) object->addObserver(listener, keyPath, slot);
}

void LWWallpaperListener::observeValueForKeyPath(std::string_view /*changedKeyPath*/,
                                                 platform::UIView& object,
                                                 const void* /*context*/) {
  const VisibilityHandler handler = visibilityHandler;
  if (handler == nullptr) return;
  stoppingExceptions([&] { handler(locationOfTag(object.tag()), !object.hidden()); });
}

}  // namespace lumora
