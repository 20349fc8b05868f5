// Observes the host hiding and showing its wallpaper views.
#pragma once

#include <memory>
#include <string_view>

#include "platform/key_value_observing.h"
#include "platform/view.h"
#include "settings/locations.h"

namespace lumora {

class LWWallpaperListener final : public platform::KeyValueObserver {
 public:
  static constexpr auto keyPath = "hidden";

  // Called with the location of the host view that was shown or hidden, on the thread that did it.
  using VisibilityHandler = void (*)(ScreenLocation location, bool isVisible);
  // Sets the handler for all listeners; without one they do nothing. Any thread.
  static void setVisibilityHandler(VisibilityHandler handler);

  // Gives the location a new listener and registers it with the object, if that is not nullptr. The
  // old listener is removed if it is on this object; on another view it stays until that view dies.
  // On tweakQueue.
  static void addListenerToObject(const std::shared_ptr<platform::UIView>& object,
                                  ScreenLocation location);

  // On the thread that changed the value.
  void observeValueForKeyPath(std::string_view changedKeyPath, platform::UIView& object,
                              const void* context) override;
};

}  // namespace lumora
