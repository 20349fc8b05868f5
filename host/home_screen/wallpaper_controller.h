// The wallpapers of the home screen: the class "SBWallpaperController" with its one instance, and
// the class "SBFWallpaperView" of the views that it makes.
#pragma once

#include <memory>

#include "host/artwork/still_wallpaper.h"
#include "host/home_screen/cached_view.h"
#include "platform/linux/views/strong_ivar.h"
#include "platform/linux/views/view_class.h"

namespace host {

// Which wallpapers the host shows at the moment.
struct WallpaperVisibility {
  bool onLockScreen = false;
  bool onHomeScreen = false;
};

class WallpaperController {
 public:
  // Registers both classes and makes the instance, which lives as long as the process.
  static void registerClasses();
  static WallpaperController& instance();

  // Makes the shared wallpaper inside this view. Main thread, as all below.
  void start(const std::shared_ptr<platform::UIView>& container);
  void layOut(platform::CGSize screen);
  void setVisibility(WallpaperVisibility visibility);
  // Tells the observers of every wallpaper again whether it is hidden.
  void reportVisibility();

  // Redraw the wallpaper for one picture on both screens, or one on each. A change between the two
  // makes new wallpaper views and lets the old ones die.
  void updateShared();
  void updateSeparate();

 private:
  struct Object;
  WallpaperController();
  std::shared_ptr<platform::UIView> makeView(artwork::Still still, bool isVisible);
  void replace(platform::backend::StrongIvar& variable,
               const std::shared_ptr<platform::UIView>& view);
  void applyVisibility(platform::backend::StrongIvar& variable, bool isVisible) const;
  bool sharedIsVisible() const { return visibility_.onLockScreen || visibility_.onHomeScreen; }

  std::unique_ptr<Object> object_;
  std::shared_ptr<platform::UIView> container_;
  platform::CGSize screen_;
  WallpaperVisibility visibility_;
};

}  // namespace host
